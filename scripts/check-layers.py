#!/usr/bin/env python3
"""Checks the include structure of orvCore/.

Reads every quoted #include under orvCore/ and fails when a header includes a header of a higher layer, or when
headers include each other in a cycle. Source files (.cpp) may include any layer: the source that lists a class's
attributes needs the attribute classes, which sit above the maths. Prints one line per fault, then a summary; exits
with 1 when there is a fault, 2 when a file under orvCore/ belongs to no layer.

Layers, lowest first. A path takes the layer of its longest matching prefix: a directory (ending in "/"), a class's
header and source (ending in "."), or one file. docs/ARCHITECTURE.md explains them.
"""

import argparse
import os
import re
import sys

LAYERS = [
    (
        "system",
        [
            "system/containers/",
            "system/debug/",
            "system/log/",
            "system/memory/",
            "system/thread/",
            "system/time/",
            "system/utils/",
            "system/genericPatterns/",
            "system/events/",
            "system/progress/",
            "version/",
            # The descriptor core: what a header needs to declare a class's descriptor. It needs only the
            # containers, so a container or a maths value type can declare a descriptor without the attributes.
            "system/inspection/orvClassDescriptor.",
            "system/inspection/orvRTTI.",
            "system/inspection/orvRTTIAccessor.",
            "system/inspection/orvRTTIAllocator.",
            "system/inspection/orvUuid.",
        ],
    ),
    ("maths", ["math/", "spatialDataStructures/", "utils/"]),
    (
        "descriptors and streams",
        ["system/inspection/", "system/serialization/", "system/dataItem/", "system/xml/"],
    ),
    (
        "engine",
        [
            "engine/",
            "physics/",
            # Held by value by the engine (a type's behaviour graph, the world's and each type's knowledge): their
            # headers must be complete where the engine declares its classes, so they sit with the engine.
            "behavior/engine/orvBehaviorGraph.",
            "knowledgeBase/orvKnowledgeBase.",
        ],
    ),
    ("behaviour and knowledge", ["behavior/", "knowledgeBase/"]),
    ("animation and assets", ["animation/", "assetManagement/", "graphicalEditorNodes/"]),
    ("library start", ["orvCore.h", "orvCore.cpp"]),
]

HEADER_SUFFIXES = (".h", ".hpp", ".inl")
SOURCE_SUFFIXES = HEADER_SUFFIXES + (".cpp", ".cc")
INCLUDE = re.compile(r'^\s*#\s*include\s*"([^"]+)"')


def layer_of(path):
    """Index and name of the layer of a path relative to the root, or None."""
    best = None
    for index, (name, prefixes) in enumerate(LAYERS):
        for prefix in prefixes:
            if path == prefix or (prefix.endswith(("/", ".")) and path.startswith(prefix)):
                if best is None or len(prefix) > best[2]:
                    best = (index, name, len(prefix))
    return None if best is None else best[:2]


def read_includes(root, path):
    """The files under root that path includes, with line numbers; includes of other libraries are left out."""
    found = []
    with open(os.path.join(root, path), encoding="utf-8", errors="replace") as stream:
        for number, line in enumerate(stream, 1):
            match = INCLUDE.match(line)
            if not match:
                continue
            target = match.group(1)
            # Includes are relative to the root; a few may be relative to the including file.
            for candidate in (target, os.path.normpath(os.path.join(os.path.dirname(path), target))):
                if os.path.isfile(os.path.join(root, candidate)):
                    found.append((candidate.replace(os.sep, "/"), number))
                    break
    return found


def find_cycles(graph):
    """Strongly connected components of more than one file, or of a file including itself (Tarjan)."""
    index_of, low, on_stack, stack, components = {}, {}, set(), [], []
    counter = [0]

    def visit(node):
        # Iterative, so that a long include chain cannot exhaust Python's recursion limit.
        work = [(node, iter(graph.get(node, ())))]
        index_of[node] = low[node] = counter[0]
        counter[0] += 1
        stack.append(node)
        on_stack.add(node)
        while work:
            current, successors = work[-1]
            advanced = False
            for successor in successors:
                if successor not in index_of:
                    index_of[successor] = low[successor] = counter[0]
                    counter[0] += 1
                    stack.append(successor)
                    on_stack.add(successor)
                    work.append((successor, iter(graph.get(successor, ()))))
                    advanced = True
                    break
                if successor in on_stack:
                    low[current] = min(low[current], index_of[successor])
            if advanced:
                continue
            work.pop()
            if work:
                parent = work[-1][0]
                low[parent] = min(low[parent], low[current])
            if low[current] == index_of[current]:
                component = []
                while True:
                    member = stack.pop()
                    on_stack.discard(member)
                    component.append(member)
                    if member == current:
                        break
                if len(component) > 1 or current in graph.get(current, ()):
                    components.append(sorted(component))

    for node in sorted(graph):
        if node not in index_of:
            visit(node)
    return components


def cycle_path(graph, component):
    """One include cycle through the first file of a component, as a list that ends where it starts."""
    members = set(component)
    start = component[0]
    previous = {start: None}
    queue = [start]
    while queue:
        node = queue.pop(0)
        for successor in sorted(graph.get(node, ())):
            if successor == start:
                path = [node]
                while previous[path[-1]] is not None:
                    path.append(previous[path[-1]])
                return list(reversed(path)) + [start]
            if successor in members and successor not in previous:
                previous[successor] = node
                queue.append(successor)
    return component + [start]


def main():
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    default_root = os.path.join(os.path.dirname(os.path.abspath(__file__)), "..", "orvCore")
    parser.add_argument("root", nargs="?", default=default_root, help="the include root (default: orvCore/)")
    parser.add_argument("--layers", action="store_true", help="print each file's layer and stop")
    arguments = parser.parse_args()
    root = os.path.normpath(arguments.root)

    files = []
    for directory, subdirectories, names in os.walk(root):
        subdirectories.sort()
        for name in sorted(names):
            if name.endswith(SOURCE_SUFFIXES):
                files.append(os.path.relpath(os.path.join(directory, name), root).replace(os.sep, "/"))

    unplaced = [path for path in files if layer_of(path) is None]
    for path in unplaced:
        print(f"no layer: {path}")
    if unplaced:
        return 2
    if arguments.layers:
        for path in files:
            print(f"{layer_of(path)[1]}: {path}")
        return 0

    graph = {}
    upward = []
    include_count = 0
    for path in files:
        includes = read_includes(root, path)
        include_count += len(includes)
        if not path.endswith(HEADER_SUFFIXES):
            continue
        graph[path] = {target for target, _ in includes}
        own = layer_of(path)
        for target, line in includes:
            other = layer_of(target)
            if other[0] > own[0]:
                upward.append(f"upward include: {path}:{line} ({own[1]}) includes {target} ({other[1]})")

    cycles = find_cycles(graph)
    for line in upward:
        print(line)
    for component in cycles:
        path = cycle_path(graph, component)
        line = "include cycle: " + " -> ".join(path)
        if len(component) > len(path) - 1:
            # One cycle is shown; the others run through the same files.
            line += f" (the cycles join {len(component)} headers: {', '.join(component)})"
        print(line)
    print(
        f"check-layers: {len(files)} files, {include_count} includes: "
        f"{len(upward)} upward includes, {len(cycles)} include cycles"
    )
    return 1 if upward or cycles else 0


if __name__ == "__main__":
    sys.exit(main())
