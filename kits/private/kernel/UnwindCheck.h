#pragma once

namespace kernel {
// Whether the calling thread's stack can be unwound down to its first function: false while a
// function is under way that lets nothing through, as destructors and noexcept functions do (being
// unwound through those ends the program), or inside a catch (...). Takes some microseconds.
[[nodiscard]] bool StackCanBeUnwound();
} // namespace kernel
