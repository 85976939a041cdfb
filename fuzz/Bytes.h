// Takes an input apart: small numbers from its front, texts of any length, and what is left. Any input will do; one
// that has run out gives zeros and empty texts.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace blockhouse::fuzz {

class Bytes {
public:
    Bytes(const std::uint8_t* data, std::size_t size) : left_(reinterpret_cast<const char*>(data), size) {}

    [[nodiscard]] bool empty() const { return left_.empty(); }

    // From 0 up to, not including, `limit`, which is at most 65536.
    std::size_t below(std::size_t limit) {
        const std::size_t high = limit > 256 ? byte() : 0;
        return limit == 0 ? 0 : (high * 256 + byte()) % limit;
    }

    // At most 255 characters.
    std::string text() { return take(byte()); }

    std::string rest() { return take(left_.size()); }

private:
    std::size_t byte() {
        if (left_.empty())
            return 0;
        const auto first = static_cast<unsigned char>(left_.front());
        left_.remove_prefix(1);
        return first;
    }

    std::string take(std::size_t size) {
        const std::string taken(left_.substr(0, size));
        left_.remove_prefix(taken.size());
        return taken;
    }

    std::string_view left_;
};

} // namespace blockhouse::fuzz
