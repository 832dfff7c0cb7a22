#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

/// Every exported function with plain arguments, for tests that hold something of all of them. What its caller owns lies
/// outside the stack.
namespace functions {

struct Function {
    const char *name;
    /// @return its result; 0 for those that return something else or nothing
    std::uint32_t (*call)();
    std::size_t stackLimit;
};

/// A row for each exported function; some stand twice with arguments that lead another way.
const std::vector<Function> &all();

/// The text that the parser and the codec are called with.
void setText(const std::string &text);

} // namespace functions
