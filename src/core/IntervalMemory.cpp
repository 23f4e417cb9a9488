#include "core/IntervalMemory.h"

#include <sys/mman.h>

#include <cstdint>
#include <cstdlib>
#include <new>

namespace pemlo {

namespace {

constexpr std::size_t HugePage = std::size_t{2} << 20;
// Below this a block comes from the heap: its pages are few.
constexpr std::size_t LargeBlock = std::size_t{256} << 10;

std::size_t RoundUp(std::size_t n, std::size_t unit) { return (n + unit - 1) / unit * unit; }

}  // namespace

IntervalMemory::IntervalMemory(std::size_t floats)
{
    const std::size_t bytes = floats * sizeof(float);
    if (bytes < LargeBlock) {
        first_ = static_cast<float*>(std::calloc(floats == 0 ? 1 : floats, sizeof(float)));
        if (first_ == nullptr) throw std::bad_alloc();
        return;
    }
    // Over-ask by one huge page so that an aligned run of them fits; the kernel's pages
    // come zero-filled.
    const std::size_t used = RoundUp(bytes, HugePage);
    mappedBytes_ = used + HugePage;
    mapping_ = ::mmap(nullptr, mappedBytes_, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS | MAP_NORESERVE, -1, 0);
    if (mapping_ == MAP_FAILED) {
        mapping_ = nullptr;
        throw std::bad_alloc();
    }
    const auto start = RoundUp(reinterpret_cast<std::uintptr_t>(mapping_), HugePage);
    first_ = reinterpret_cast<float*>(start);
    ::madvise(first_, used, MADV_HUGEPAGE);
#ifdef MADV_POPULATE_WRITE
    // Where huge pages are not to be had, all pages at once still cost less than one
    // fault each (an older kernel refuses the advice, and the pages come on demand).
    ::madvise(first_, bytes, MADV_POPULATE_WRITE);
#endif
}

IntervalMemory::~IntervalMemory()
{
    if (mapping_ != nullptr) {
        ::munmap(mapping_, mappedBytes_);
    } else {
        std::free(first_);
    }
}

}  // namespace pemlo
