#include "tests/jet/largest_allocation.h"

#include <algorithm>
#include <atomic>
#include <cstdlib>
#include <new>

namespace {

std::atomic<std::size_t> largest = 0;

}  // namespace

// All other forms of new and delete lead to these.

void* operator new(std::size_t size) {
    largest = std::max(largest.load(std::memory_order_relaxed), size);
    if (void* memory = std::malloc(size == 0 ? 1 : size)) {
        return memory;
    }
    throw std::bad_alloc();
}

void operator delete(void* memory) noexcept { std::free(memory); }
void operator delete(void* memory, std::size_t) noexcept { std::free(memory); }

namespace jet_test {

LargestAllocation::LargestAllocation() { largest = 0; }

std::size_t LargestAllocation::bytes() const { return largest; }

}  // namespace jet_test
