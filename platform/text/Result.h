// A value or the reason there is none. Neither can be dropped silently.
#pragma once

#include <string>
#include <utility>
#include <variant>

namespace blockhouse {

// A file operation that failed: which file, and why in words a person understands ("Permission denied").
struct FileError {
    std::string path;
    std::string cause;
};

template <typename Value>
class [[nodiscard]] Result {
public:
    Result(Value value) : state_(std::in_place_index<0>, std::move(value)) {}

    Result(FileError error) : state_(std::in_place_index<1>, std::move(error)) {}

    [[nodiscard]] bool ok() const { return state_.index() == 0; }

    explicit operator bool() const { return ok(); }

    // Only while ok().
    [[nodiscard]] const Value& value() const& { return std::get<0>(state_); }

    [[nodiscard]] Value&& value() && { return std::get<0>(std::move(state_)); }

    // Only while not ok().
    [[nodiscard]] const FileError& error() const { return std::get<1>(state_); }

private:
    std::variant<Value, FileError> state_;
};

// Success without a value.
struct Done {};

} // namespace blockhouse
