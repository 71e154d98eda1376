// tests/support/orvAllocationCounter.cpp
#include "support/orvAllocationCounter.h"

#include <atomic>
#include <cstddef>

// A sanitizer runtime owns malloc: count through its hook rather than replace malloc. g++ names the sanitizer by a
// macro, clang by a feature.
#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
#define ORV_TEST_SANITIZED_MALLOC 1
#elif defined(__has_feature)
#if __has_feature(address_sanitizer) || __has_feature(thread_sanitizer)
#define ORV_TEST_SANITIZED_MALLOC 1
#endif
#endif

#if defined(ORV_TEST_SANITIZED_MALLOC)
// The sanitizer runtime exports this hook; its header does not come with every compiler.
extern "C" int __sanitizer_install_malloc_and_free_hooks(void (*mallocHook)(const volatile void*, size_t),
                                                         void (*freeHook)(const volatile void*));
#endif

namespace
{

std::atomic<bool> g_counting{false};
std::atomic<int> g_count{0};

// Called on every allocation of the process: no allocation, no lock, relaxed atomics only.
inline void noteAllocation()
{
    if (g_counting.load(std::memory_order_relaxed))
    {
        g_count.fetch_add(1, std::memory_order_relaxed);
    }
}

} // namespace

#if defined(ORV_TEST_SANITIZED_MALLOC)
namespace
{

void onMalloc(const volatile void*, size_t)
{
    noteAllocation();
}

void onFree(const volatile void*)
{
}

// Installed before main, so that every test of the binary can count.
struct HookInstaller
{
    HookInstaller() { __sanitizer_install_malloc_and_free_hooks(&onMalloc, &onFree); }
} g_hookInstaller;

} // namespace
#else
// Every malloc of the process, the library's included, goes through these while the test binary runs. They are
// weak so that a test file which brings its own stand-ins still links.
extern "C"
{
    void* __libc_malloc(size_t size);
    void* __libc_calloc(size_t count, size_t size);
    void* __libc_realloc(void* pointer, size_t size);

    __attribute__((weak)) void* malloc(size_t size)
    {
        noteAllocation();
        return __libc_malloc(size);
    }

    __attribute__((weak)) void* calloc(size_t count, size_t size)
    {
        noteAllocation();
        return __libc_calloc(count, size);
    }

    __attribute__((weak)) void* realloc(void* pointer, size_t size)
    {
        noteAllocation();
        return __libc_realloc(pointer, size);
    }
}
#endif

namespace orvtest
{

void AllocationCounter::start()
{
    g_count.store(0);
    g_counting.store(true);
}

void AllocationCounter::stop()
{
    g_counting.store(false);
}

int AllocationCounter::getCount()
{
    return g_count.load();
}

} // namespace orvtest
