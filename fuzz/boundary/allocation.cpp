#include "boundary/allocation.h"

#include <cstdlib>
#include <new>

extern "C" {
void* __real_malloc(std::size_t size);
void* __real_calloc(std::size_t count, std::size_t size);
void* __real_realloc(void* memory, std::size_t size);
}

namespace quendal::fuzz {

constinit AllocationRule allocationRule;

namespace {

void* allocate(std::size_t size) noexcept {
  return allocationRule.refuses(size) ? nullptr : __real_malloc(size == 0 ? 1 : size);
}

void* allocateOrThrow(std::size_t size) {
  void* const memory = allocate(size);
  if (memory == nullptr) throw std::bad_alloc();
  return memory;
}

}  // namespace
}  // namespace quendal::fuzz

using namespace quendal::fuzz;

// The linker gives these in place of the C library's.
extern "C" {
void* __wrap_malloc(std::size_t size) {
  return allocationRule.refuses(size) ? nullptr : __real_malloc(size);
}
void* __wrap_calloc(std::size_t count, std::size_t size) {
  const bool isTooMuch = size != 0 && count > SIZE_MAX / size;
  if (isTooMuch || allocationRule.refuses(count * size)) return nullptr;
  return __real_calloc(count, size);
}
void* __wrap_realloc(void* memory, std::size_t size) {
  return allocationRule.refuses(size) ? nullptr : __real_realloc(memory, size);
}
}

void* operator new(std::size_t size) { return allocateOrThrow(size); }
void* operator new[](std::size_t size) { return allocateOrThrow(size); }
void* operator new(std::size_t size, const std::nothrow_t&) noexcept { return allocate(size); }
void* operator new[](std::size_t size, const std::nothrow_t&) noexcept { return allocate(size); }
void operator delete(void* memory) noexcept { std::free(memory); }
void operator delete[](void* memory) noexcept { std::free(memory); }
void operator delete(void* memory, std::size_t) noexcept { std::free(memory); }
void operator delete[](void* memory, std::size_t) noexcept { std::free(memory); }
void operator delete(void* memory, const std::nothrow_t&) noexcept { std::free(memory); }
void operator delete[](void* memory, const std::nothrow_t&) noexcept { std::free(memory); }
