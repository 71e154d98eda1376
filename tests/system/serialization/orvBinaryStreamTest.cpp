#include <gtest/gtest.h>

#include <cstdint>
#include <cstdio>
#include <cstring>
#include <initializer_list>
#include <string>
#include <utility>
#include <vector>

#include "engine/simulation/orvEntityHandle.h"
#include "math/types/orvVector3.h"
#include "system/containers/orvArray.h"
#include "system/containers/orvMap.h"
#include "system/containers/orvPODArray.h"
#include "system/containers/orvString.h"
#include "system/inspection/orvAttribute.h"
#include "system/inspection/orvInspectionTestSupport.h"
#include "system/inspection/orvReferenceCounter.h"
#include "system/inspection/orvSmartPointer.h"
#include "system/serialization/orvBinaryStream.h"
#include "system/serialization/orvBinaryStreamCheck.h"

namespace orvtest::stream
{

using orv::Array;
using orv::BinaryStream;
using orv::OrvMap;
using orv::OrvString;
using orv::PODArray;
using orv::SmartPointer;
using orv::Uuid;

/// The base and value types whose forms differ in width, one member each.
class Scalars
{
    ORV_DECLARE_VALUE_RTTI(Scalars)

public:
    bool _flag = false;
    int16_t _short = 0;
    uint64_t _unsignedLong = 0;
    Uuid _uuid;
    OrvString _text;
    orv::Vector3 _vector3;
    orv::EntityHandle _handle;
};

/// A node of a graph, also held by smart pointers; counts its live instances.
class Node : public orv::ReferenceCounter
{
    ORV_DECLARE_RTTI(Node)

public:
    Node() { ++_live; }
    explicit Node(int value) : _value(value) { ++_live; }
    Node(const Node& other) : ReferenceCounter(other), _value(other._value), _next(other._next) { ++_live; }
    Node& operator=(const Node&) = default;
    ~Node() override { --_live; }

    static inline int _live = 0;
    int _value = 0;
    Node* _next = nullptr;
};

/// A pointer, a node by value, two smart pointers and two pointers to a base value, in that order.
class Graph
{
    ORV_DECLARE_RTTI(Graph)

public:
    virtual ~Graph() = default;

    Node* _first = nullptr;
    Node _embedded;
    SmartPointer<Node> _shared;
    SmartPointer<Node> _sharedAgain;
    int* _number = nullptr;
    int* _numberAgain = nullptr;
};

/// One container of each kind.
class Containers
{
    ORV_DECLARE_VALUE_RTTI(Containers)

public:
    PODArray<bool> _flags;
    Array<Node> _nodes;
    Array<Node*> _pointers;
    Array<std::pair<int, OrvString>> _pairs;
    OrvMap<int, OrvString> _names;
};

/// Plain values only: an object a walk passes over silently.
class Spin
{
    ORV_DECLARE_VALUE_RTTI(Spin)

public:
    float _rate = 0.0f;
    double _phase = 0.0;
};

/// A word, plain values and a handle in a row, a pointer, then a silent object: a walk can hear of it whole.
class Particle
{
    ORV_DECLARE_VALUE_RTTI(Particle)

public:
    int _tag = 0;
    float _mass = 0.0f;
    orv::Vector3 _position;
    orv::EntityHandle _handle;
    Node* _node = nullptr;
    Spin _spin;
};

/// Particles and the nodes they point at.
class Swarm
{
    ORV_DECLARE_VALUE_RTTI(Swarm)

public:
    Array<Node> _nodes;
    Array<Particle> _particles;
};

ORV_IMPLEMENT_RTTI(Scalars, "1d2c3b4a-5f6e-4d7c-8b9a-0a1b2c3d4e55", "orvtest::Scalars")
ORV_IMPLEMENT_RTTI(Node, "6a7b8c9d-0e1f-4a2b-9c3d-4e5f6a7b8c66", "orvtest::Node")
ORV_IMPLEMENT_RTTI(Graph, "7b8c9d0e-1f2a-4b3c-8d4e-5f6a7b8c9d77", "orvtest::Graph")
ORV_IMPLEMENT_RTTI(Containers, "8c9d0e1f-2a3b-4c4d-9e5f-6a7b8c9d0e88", "orvtest::Containers")
ORV_IMPLEMENT_RTTI(Spin, "9d0e1f2a-3b4c-4d5e-8f6a-7b8c9d0e1f99", "orvtest::Spin")
ORV_IMPLEMENT_RTTI(Particle, "0e1f2a3b-4c5d-4e6f-9a7b-8c9d0e1f2aaa", "orvtest::Particle")
ORV_IMPLEMENT_RTTI(Swarm, "1f2a3b4c-5d6e-4f7a-8b8c-9d0e1f2a3bbb", "orvtest::Swarm")

void Scalars::addAttributes()
{
    addAttribute("flag", &Scalars::_flag);
    addAttribute("short", &Scalars::_short);
    addAttribute("unsignedLong", &Scalars::_unsignedLong);
    addAttribute("uuid", &Scalars::_uuid);
    addAttribute("text", &Scalars::_text);
    addAttribute("vector3", &Scalars::_vector3);
    addAttribute("handle", &Scalars::_handle);
}

void Node::addAttributes()
{
    _rtti->addBaseClass<orv::ReferenceCounter>();
    addAttribute("value", &Node::_value);
    addAttribute("next", &Node::_next);
}

void Graph::addAttributes()
{
    addAttribute("first", &Graph::_first);
    addAttribute("embedded", &Graph::_embedded);
    addAttribute("shared", &Graph::_shared);
    addAttribute("sharedAgain", &Graph::_sharedAgain);
    addAttribute("number", &Graph::_number);
    addAttribute("numberAgain", &Graph::_numberAgain);
}

void Containers::addAttributes()
{
    addAttribute("flags", &Containers::_flags);
    addAttribute("nodes", &Containers::_nodes);
    addAttribute("pointers", &Containers::_pointers);
    addAttribute("pairs", &Containers::_pairs);
    addAttribute("names", &Containers::_names);
}

void Spin::addAttributes()
{
    addAttribute("rate", &Spin::_rate);
    addAttribute("phase", &Spin::_phase);
}

void Particle::addAttributes()
{
    addAttribute("tag", &Particle::_tag);
    addAttribute("mass", &Particle::_mass);
    addAttribute("position", &Particle::_position);
    addAttribute("handle", &Particle::_handle);
    addAttribute("node", &Particle::_node);
    addAttribute("spin", &Particle::_spin);
}

void Swarm::addAttributes()
{
    addAttribute("nodes", &Swarm::_nodes);
    addAttribute("particles", &Swarm::_particles);
}

} // namespace orvtest::stream

namespace
{

using namespace orvtest::stream;

/// Bytes given as small integers.
std::string bytes(std::initializer_list<int> values)
{
    std::string result;
    for (int value : values)
    {
        result.push_back(static_cast<char>(value));
    }
    return result;
}

/// The 16 storage bytes of a class's identifier.
std::string uuidBytes(const orv::RTTI* rtti)
{
    return std::string(reinterpret_cast<const char*>(&rtti->getTypeID()), sizeof(Uuid));
}

/// The test classes registered as initCore registers the library's.
class BinaryStreamTest : public orvtest::InspectionTest
{
protected:
    void SetUp() override
    {
        InspectionTest::SetUp();
        Scalars::createClassRTTI(true);
        Node::createClassRTTI(true);
        Graph::createClassRTTI(true);
        Containers::createClassRTTI(true);
        Spin::createClassRTTI(true);
        Particle::createClassRTTI(true);
        Swarm::createClassRTTI(true);
        _liveNodes = Node::_live;
    }
    void TearDown() override
    {
        Swarm::destroyClassRTTI(true);
        Particle::destroyClassRTTI(true);
        Spin::destroyClassRTTI(true);
        Containers::destroyClassRTTI(true);
        Graph::destroyClassRTTI(true);
        Node::destroyClassRTTI(true);
        Scalars::destroyClassRTTI(true);
        InspectionTest::TearDown();
    }

    /// Reads back from the start what was packed, as a loader does.
    template <typename T>
    void rewindAndUnpack(T& value)
    {
        _stream.clear();
        _stream.getStream().seekg(0);
        _stream.unpack(value);
    }

    BinaryStream _stream;
    int _liveNodes = 0;
};

TEST_F(BinaryStreamTest, BaseAndValueTypesRoundTripAtTheirFixedWidths)
{
    Scalars written;
    written._flag = true;
    written._short = -12345;
    written._unsignedLong = ~uint64_t(0) - 5;
    written._uuid = Uuid("0a1b2c3d-4e5f-4061-8293-a4b5c6d7e8f9");
    written._text = "crowd";
    written._vector3 = orv::Vector3(3.0f, 4.0f, 5.0f);
    written._handle = orv::EntityHandle(0xABCDE, 0x5A5, 1);
    _stream.pack(written);
    // Id and count, then 1+2+8+16+(4+5)+12+4 bytes: Vector3's padding is not stored.
    EXPECT_EQ(8u + 52u, _stream.getLength());

    // Written again from what was read, the bytes are the same.
    Scalars read;
    rewindAndUnpack(read);
    EXPECT_EQ(_stream.getLength(), _stream.getPosition());
    BinaryStream again;
    again.pack(read);
    EXPECT_EQ(_stream.getStream().str(), again.getStream().str());
}

TEST_F(BinaryStreamTest, AnObjectWrittenThroughAPointerHasTheseExactBytes)
{
    Node node(5);
    _stream.pack(&node);
    const std::string expected = bytes({1, 0, 0, 0}) + uuidBytes(Node::getClassRTTI()) +
                                 bytes({1, 1, 0, 0, 0, 2, 0, 0, 0, 5, 0, 0, 0, 0, 0, 0, 0});
    EXPECT_EQ(expected, _stream.getStream().str());
}

TEST_F(BinaryStreamTest, NullPointersCostFourBytesForObjectsAndFiveForBaseValues)
{
    _stream.pack(static_cast<Node*>(nullptr));
    _stream.pack(static_cast<const int*>(nullptr));
    EXPECT_EQ(bytes({0, 0, 0, 0, 0, 0, 0, 0, 0}), _stream.getStream().str());
}

TEST_F(BinaryStreamTest, ContainersRoundTripAndPointersIntoThemResolveToTheReadElements)
{
    Containers written;
    written._flags.push_back(true);
    written._flags.push_back(false);
    written._nodes.push_back(Node(11));
    written._nodes.push_back(Node(12));
    written._pointers.push_back(&written._nodes[1]);
    written._pointers.push_back(nullptr);
    written._pairs.push_back(std::make_pair(9, OrvString("nine")));
    written._names[30] = "thirty";
    _stream.pack(written);

    Containers read;
    rewindAndUnpack(read);
    EXPECT_EQ(written._flags, read._flags);
    ASSERT_EQ(2u, read._nodes.size());
    EXPECT_EQ(12, read._nodes[1]._value);
    // The pointer into the array resolves to the element read in place, not to a copy.
    ASSERT_EQ(2u, read._pointers.size());
    EXPECT_EQ(&read._nodes[1], read._pointers[0]);
    EXPECT_EQ(nullptr, read._pointers[1]);
    ASSERT_EQ(1u, read._pairs.size());
    EXPECT_EQ(OrvString("nine"), read._pairs[0].second);
    EXPECT_EQ(OrvString("thirty"), read._names[30]);
}

TEST_F(BinaryStreamTest, ContainerBytesAreACountThenTheElementsInKeyOrder)
{
    OrvMap<int, char> map;
    map[3] = 'c';
    map[1] = 'a';
    _stream.pack(Array<Node>());
    _stream.pack(map);
    EXPECT_EQ(bytes({0, 0, 0, 0, 2, 0, 0, 0, 1, 0, 0, 0, 'a', 3, 0, 0, 0, 'c'}), _stream.getStream().str());
}

TEST_F(BinaryStreamTest, TwoPointersToOneObjectCarryOneBodyAndReadBackAsOneObject)
{
    Node shared(8);
    PODArray<Node*> written;
    written.push_back(&shared);
    written.push_back(&shared);
    _stream.pack(written);
    const std::string all = _stream.getStream().str();
    ASSERT_EQ(4u + 37u + 21u, all.size());
    EXPECT_EQ(bytes({1, 0, 0, 0}) + uuidBytes(Node::getClassRTTI()) + bytes({0}), all.substr(41));

    PODArray<Node*> read;
    rewindAndUnpack(read);
    ASSERT_EQ(2u, read.size());
    EXPECT_EQ(read[0], read[1]);
    EXPECT_EQ(8, read[0]->_value);
    EXPECT_EQ(_liveNodes + 2, Node::_live);
    delete read[0];
}

TEST_F(BinaryStreamTest, ACycleOfTwoObjectsRoundTrips)
{
    Node a(1);
    Node b(2);
    a._next = &b;
    b._next = &a;
    _stream.pack(&a);

    Node* read = nullptr;
    rewindAndUnpack(read);
    ASSERT_NE(nullptr, read);
    ASSERT_NE(nullptr, read->_next);
    EXPECT_EQ(2, read->_next->_value);
    EXPECT_EQ(read, read->_next->_next);
    EXPECT_EQ(_liveNodes + 4, Node::_live);
    delete read->_next;
    delete read;
}

TEST_F(BinaryStreamTest, APointerToAByValueObjectCarriesNoBodyAndResolvesIntoIt)
{
    Graph written;
    written._embedded._value = 21;
    written._first = &written._embedded;
    _stream.pack(written);
    // Graph id and count, then the first pointer: id, class, and no body, which stands at the by-value place.
    const std::string all = _stream.getStream().str();
    ASSERT_EQ(63u, all.size());
    EXPECT_EQ(0, all[8 + 4 + 16]);

    Graph read;
    const int liveBeforeRead = Node::_live;
    rewindAndUnpack(read);
    EXPECT_EQ(&read._embedded, read._first);
    EXPECT_EQ(21, read._embedded._value);
    // The instance made for the pointer before its target was known is gone.
    EXPECT_EQ(liveBeforeRead, Node::_live);
}

TEST_F(BinaryStreamTest, SharedSmartAndBaseValuePointersComeBackShared)
{
    int number = 77;
    Graph written;
    written._shared = SmartPointer<Node>(new Node(5));
    written._sharedAgain = written._shared;
    written._number = &number;
    written._numberAgain = &number;
    _stream.pack(written);

    Graph read;
    rewindAndUnpack(read);
    ASSERT_NE(nullptr, read._shared.getImpl());
    EXPECT_EQ(read._shared.getImpl(), read._sharedAgain.getImpl());
    EXPECT_EQ(2u, read._shared.getReferenceCount());
    EXPECT_EQ(5, read._shared->_value);
    ASSERT_NE(nullptr, read._number);
    EXPECT_EQ(read._number, read._numberAgain);
    EXPECT_EQ(77, *read._number);
    delete read._number;
}

TEST_F(BinaryStreamTest, BytesThatRunOutOrNameNoClassAreReadAsDefaults)
{
    // A count of three followed by one element yields default elements for the missing ones.
    _stream.write(bytes({3, 0, 0, 0, 7, 0, 0, 0}).data(), 8);
    Array<int> array;
    rewindAndUnpack(array);
    ASSERT_EQ(3u, array.size());
    EXPECT_EQ(0, array[2]);

    const std::string unknown = bytes({1, 0, 0, 0}) + std::string(16, '\x5A') + bytes({0});
    _stream.importFrom(reinterpret_cast<const uint8_t*>(unknown.data()), unknown.size());
    Node target;
    Node* pointer = &target;
    _stream.unpack(pointer);
    EXPECT_EQ(nullptr, pointer);
}

TEST_F(BinaryStreamTest, StreamsRoundTripThroughFiles)
{
    Containers written;
    written._names[2] = "on disk";
    _stream.pack(written);
    const std::string path = ::testing::TempDir() + "orvBinaryStreamTest.bin";
    _stream.exportTo(path.c_str());

    BinaryStream fromFile;
    fromFile.importFrom(path.c_str());
    Containers read;
    fromFile.unpack(read);
    EXPECT_EQ(OrvString("on disk"), read._names[2]);
    std::remove(path.c_str());
}

TEST_F(BinaryStreamTest, ABoolByteOtherThanZeroOrOneReadsAsTrue)
{
    Scalars written;
    _stream.pack(written);
    std::string all = _stream.getStream().str();
    all[8] = 7;
    _stream.importFrom(reinterpret_cast<const uint8_t*>(all.data()), all.size());
    Scalars read;
    _stream.unpack(read);
    EXPECT_TRUE(read._flag == true);
}

/// Walks bytes as a T with the stream's check; the reason when refused, empty when accepted.
template <typename T>
std::string checkAs(const std::string& data)
{
    orv::BinaryStreamCheck check(reinterpret_cast<const uint8_t*>(data.data()), data.size(), nullptr);
    return check.checkValue<T>() && check.checkEnd() ? std::string() : std::string(check.getRefusalReason());
}

TEST_F(BinaryStreamTest, TheCheckAcceptsWhatThePackWritesAndNoPrefixOfIt)
{
    int number = 3;
    Graph graph;
    graph._first = new Node(1);
    graph._first->_next = &graph._embedded;
    graph._shared = SmartPointer<Node>(new Node(2));
    graph._sharedAgain = graph._shared;
    graph._number = &number;
    graph._numberAgain = &number;
    _stream.pack(graph);
    const std::string all = _stream.getStream().str();
    EXPECT_EQ("", checkAs<Graph>(all));
    for (size_t size = 0; size < all.size(); ++size)
    {
        EXPECT_NE("", checkAs<Graph>(all.substr(0, size))) << size;
    }
    delete graph._first;

    Containers containers;
    containers._flags.push_back(true);
    containers._nodes.resize(2);
    containers._pointers.push_back(&containers._nodes[1]);
    containers._pairs.push_back(std::make_pair(4, OrvString("four")));
    containers._names[1] = "one";
    BinaryStream stream;
    stream.pack(containers);
    EXPECT_EQ("", checkAs<Containers>(stream.getStream().str()));
}

TEST_F(BinaryStreamTest, TheCheckRefusesWrongClassesCountsAndDepths)
{
    Graph graph;
    graph._first = new Node(1);
    _stream.pack(graph);
    std::string all = _stream.getStream().str();
    delete graph._first;
    // Graph id and count, then the first pointer's id and class.
    std::string wrongClass = all;
    wrongClass.replace(12, 16, uuidBytes(Graph::getClassRTTI()));
    EXPECT_NE(std::string::npos, checkAs<Graph>(wrongClass).find("orvtest::Graph stands where orvtest::Node"));
    std::string unknownClass = all;
    unknownClass[12] ^= 0x5A;
    EXPECT_NE(std::string::npos, checkAs<Graph>(unknownClass).find("is not a registered class"));
    std::string attributeCount = all;
    attributeCount[4] = 9;
    EXPECT_NE(std::string::npos, checkAs<Graph>(attributeCount).find("has 6 attributes, the stream gives 9"));

    // A count of 2^32 - 1 Nodes with four bytes behind it: refused before anything is sized by it.
    EXPECT_NE(std::string::npos, checkAs<Array<Node>>(bytes({-1, -1, -1, -1, 0, 0, 0, 0})).find("a count of"));

    // A chain of nodes each carrying the next one's body nests one level per node.
    std::vector<Node> chain(orv::BinaryStreamCheck::maxDepth + 1);
    for (size_t i = 0; i + 1 < chain.size(); ++i)
    {
        chain[i]._next = &chain[i + 1];
    }
    Node* head = &chain[0];
    BinaryStream deep;
    deep.pack(head);
    EXPECT_NE(std::string::npos, checkAs<Node*>(deep.getStream().str()).find("nest deeper than"));
    BinaryStream shallow;
    Node* middle = &chain[chain.size() / 2];
    shallow.pack(middle);
    EXPECT_EQ("", checkAs<Node*>(shallow.getStream().str()));
}

/// Keeps, as one line per node or particle, what an observer hears of them: whole, or call by call.
class ElementRecorder : public orv::BinaryStreamCheck::IObserver
{
public:
    explicit ElementRecorder(Notice notice) : _notice(notice) {}

    Notice noticeOf(const orv::RTTI& rtti, const orv::AbstractAttribute&) override
    {
        if (&rtti == Spin::getClassRTTI())
        {
            return SILENT;
        }
        return &rtti == Node::getClassRTTI() || &rtti == Particle::getClassRTTI() ? _notice : EACH_CALL;
    }
    void onObjectBegin(orv::BinaryStreamCheck& check, const orv::RTTI& rtti, uint32_t id) override
    {
        _inNode = &rtti == Node::getClassRTTI() || &rtti == Particle::getClassRTTI();
        _line = std::to_string(id) + "@" + std::to_string(check.getPosition());
    }
    void onWord(orv::BinaryStreamCheck& check, uint32_t word) override { hear(check.getAttribute(), word); }
    void onPointer(orv::BinaryStreamCheck& check, uint32_t id) override { hear(check.getAttribute(), id); }
    void onObjectEnd(orv::BinaryStreamCheck&, const orv::RTTI&) override
    {
        if (_inNode)
        {
            _lines.push_back(_line);
        }
        _inNode = false;
    }
    void onObjects(orv::BinaryStreamCheck&, const orv::RTTI&, const WholeObject* objects, size_t count,
                   const orv::AbstractAttribute* const* attributes, const uint32_t* words,
                   size_t wordsPerObject) override
    {
        ++_calls;
        for (size_t i = 0; i < count; ++i)
        {
            _line = std::to_string(objects[i]._id) + "@" + std::to_string(objects[i]._offset);
            for (size_t w = 0; w < wordsPerObject; ++w)
            {
                _line +=
                    " " + std::string(attributes[w]->getName()) + "=" + std::to_string(words[i * wordsPerObject + w]);
            }
            _lines.push_back(_line);
        }
    }

    std::vector<std::string> _lines;
    int _calls = 0;

private:
    void hear(const orv::AbstractAttribute* attribute, uint32_t word)
    {
        if (_inNode)
        {
            _line += " " + std::string(attribute->getName()) + "=" + std::to_string(word);
        }
    }

    Notice _notice;
    bool _inNode = false;
    std::string _line;
};

/// Walks data as a Swarm with observer; the offset and reason of the refusal, empty when accepted.
std::string refusalOf(const std::string& data, orv::BinaryStreamCheck::IObserver& observer)
{
    orv::BinaryStreamCheck check(reinterpret_cast<const uint8_t*>(data.data()), data.size(), &observer);
    if (check.checkValue<Swarm>() && check.checkEnd())
    {
        return std::string();
    }
    return std::to_string(check.getRefusalOffset()) + " " + check.getRefusalReason();
}

TEST_F(BinaryStreamTest, ObjectsHeardOfWholeComeInBatchesWithTheValuesOfTheCallByCallWalk)
{
    // Forty nodes, more than a batch, each pointing at the one before or, for the first, at one read later; then
    // particles pointing at nodes.
    Swarm swarm;
    swarm._nodes.resize(40);
    for (size_t i = 0; i < swarm._nodes.size(); ++i)
    {
        swarm._nodes[i]._value = static_cast<int>(100 + i);
        swarm._nodes[i]._next = &swarm._nodes[i == 0 ? swarm._nodes.size() - 1 : i - 1];
    }
    swarm._particles.resize(20);
    for (size_t i = 0; i < swarm._particles.size(); ++i)
    {
        swarm._particles[i]._tag = static_cast<int>(i);
        swarm._particles[i]._handle.setUint32(static_cast<uint32_t>(1000 + i));
        swarm._particles[i]._node = &swarm._nodes[i];
    }
    _stream.pack(swarm);
    const std::string all = _stream.getStream().str();

    ElementRecorder whole(ElementRecorder::ONE_CALL);
    ElementRecorder eachCall(ElementRecorder::EACH_CALL);
    EXPECT_EQ("", refusalOf(all, whole));
    EXPECT_EQ("", refusalOf(all, eachCall));
    ASSERT_EQ(60u, whole._lines.size());
    EXPECT_EQ(eachCall._lines, whole._lines);
    EXPECT_NE(std::string::npos, whole._lines[1].find(" value=101 next=")) << whole._lines[1];
    EXPECT_NE(std::string::npos, whole._lines[42].find(" tag=2 handle=1002 node=")) << whole._lines[42];
    EXPECT_LT(2, whole._calls);
    EXPECT_GT(60, whole._calls);

    // Cut or changed anywhere, the bytes are refused at the same place for the same reason either way.
    for (size_t size = 0; size < all.size(); ++size)
    {
        ElementRecorder cutWhole(ElementRecorder::ONE_CALL);
        ElementRecorder cutEachCall(ElementRecorder::EACH_CALL);
        ASSERT_EQ(refusalOf(all.substr(0, size), cutEachCall), refusalOf(all.substr(0, size), cutWhole)) << size;
        std::string changed = all;
        changed[size] = static_cast<char>(changed[size] ^ 0x41);
        ElementRecorder changedWhole(ElementRecorder::ONE_CALL);
        ElementRecorder changedEachCall(ElementRecorder::EACH_CALL);
        ASSERT_EQ(refusalOf(changed, changedEachCall), refusalOf(changed, changedWhole)) << size;
    }
}

/// Takes the words of containers in one call, or declines them.
class WordRecorder : public orv::BinaryStreamCheck::IObserver
{
public:
    explicit WordRecorder(bool takesRuns) : _takesRuns(takesRuns) {}

    bool onWords(orv::BinaryStreamCheck& check, const uint8_t* words, uint32_t count) override
    {
        _firstAt = check.getPosition();
        for (uint32_t i = 0; _takesRuns && i < count; ++i)
        {
            uint32_t word = 0;
            memcpy(&word, words + i * sizeof(word), sizeof(word));
            _words.push_back(word);
        }
        return _takesRuns;
    }
    void onWord(orv::BinaryStreamCheck& check, uint32_t word) override
    {
        _words.push_back(word);
        _lastAt = check.getPosition();
    }

    bool _takesRuns;
    std::vector<uint32_t> _words;
    uint64_t _firstAt = 0;
    uint64_t _lastAt = 0;
};

TEST_F(BinaryStreamTest, TheWordsOfAContainerComeInOneCallOrOneByOneWhenDeclined)
{
    PODArray<int> numbers;
    for (int i = 0; i < 5; ++i)
    {
        numbers.push_back(7 * i - 3);
    }
    _stream.pack(numbers);
    const std::string all = _stream.getStream().str();
    const std::vector<uint32_t> expected = {static_cast<uint32_t>(-3), 4, 11, 18, 25};
    for (bool takesRuns : {true, false})
    {
        WordRecorder recorder(takesRuns);
        orv::BinaryStreamCheck check(reinterpret_cast<const uint8_t*>(all.data()), all.size(), &recorder);
        EXPECT_TRUE(check.checkValue<PODArray<int>>() && check.checkEnd()) << check.getRefusalReason();
        EXPECT_EQ(expected, recorder._words);
        // The run is offered where its first word stands; one by one, each is heard once walked.
        EXPECT_EQ(4u, recorder._firstAt);
        EXPECT_EQ(takesRuns ? 0u : all.size(), recorder._lastAt);
    }
}

using BinaryStreamDeathTest = BinaryStreamTest;

TEST_F(BinaryStreamDeathTest, ADifferentAttributeCountIsFatal)
{
    _stream.write(bytes({1, 0, 0, 0, 7, 0, 0, 0}).data(), 8);
    Node read;
    _stream.getStream().seekg(0);
    EXPECT_DEATH(_stream.unpack(read), "rtti.getAttributesCount\\(\\) == attributesCount");
}

TEST_F(BinaryStreamDeathTest, ImportingAMissingFileIsFatal)
{
    EXPECT_DEATH(_stream.importFrom("/no/such/orvBinaryStream.bin"), "FileDir::exist\\(fileName\\)");
}

TEST_F(BinaryStreamDeathTest, ImportingANullBufferIsFatal)
{
    EXPECT_DEATH(_stream.importFrom(nullptr, 4), "buffer != NULL");
}

} // namespace
