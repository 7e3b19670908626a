#pragma once

#include "trace/Step.h"

#include <cstdint>

namespace orvantile::trace {

/// The time until the end of the scope belongs to a step, and is recorded if the environment variable
/// ORVANTILE_TRACE names a file: Chrome trace events are written there when the program ends, with times of
/// the steady clock. Main thread only.
class [[maybe_unused]] Span {
public:
    explicit Span(Step step) noexcept;
    Span(const Span&) = delete;
    Span& operator=(const Span&) = delete;
    ~Span();

private:
    std::int64_t begin; ///< nanoseconds; 0 while nothing is recorded
    Step step;
};

/// Records an instant.
void mark(Step step) noexcept;

} // namespace orvantile::trace
