#include "tests/platform/failing_memory.h"

#include <cstddef>
#include <cstdlib>
#include <new>

namespace {

int allocations_to_go = 0;

void* Allocated(std::size_t size) {
  if (allocations_to_go > 0 && --allocations_to_go == 0) {
    throw std::bad_alloc();
  }
  if (void* memory = std::malloc(size == 0 ? 1 : size)) {
    return memory;
  }
  throw std::bad_alloc();
}

}  // namespace

void* operator new(std::size_t size) { return Allocated(size); }
void operator delete(void* memory) noexcept { std::free(memory); }
void operator delete(void* memory, std::size_t /*size*/) noexcept { std::free(memory); }

namespace vetlo {

FailingMemory::FailingMemory(int n) { allocations_to_go = n; }
FailingMemory::~FailingMemory() { allocations_to_go = 0; }
bool FailingMemory::Failed() const { return allocations_to_go == 0; }

}  // namespace vetlo
