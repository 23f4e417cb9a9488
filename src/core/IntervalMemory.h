// The memory of a grid's interval arrays: one zero-filled block for all ten, fresh at
// every grid build. A large block is asked for in huge pages where the system gives
// them. On machines where a page fault is dear (seen at some 10 microseconds in
// virtual machines), touching a fresh megabyte of interval arrays page by page took
// longer than the whole classification, and handing it back as long again.
#pragma once

#include <cstddef>

namespace pemlo {

class IntervalMemory {
public:
    // Room for `floats` values, all 0.0f.
    explicit IntervalMemory(std::size_t floats);
    ~IntervalMemory();
    IntervalMemory(const IntervalMemory&) = delete;
    IntervalMemory& operator=(const IntervalMemory&) = delete;

    float* data() noexcept { return first_; }

private:
    void* mapping_ = nullptr;  // a mapping of its own, or null for heap memory
    std::size_t mappedBytes_ = 0;
    float* first_ = nullptr;
};

}  // namespace pemlo
