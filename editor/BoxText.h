// The text of a rich-text box for rules that look at it.
#pragma once

#include "editor/TextView.h"
#include "platform/richtext/RichTextBox.h"

namespace blockhouse {

// The box must outlive it.
class BoxText : public TextView {
public:
    explicit BoxText(const RichTextBox& box) : box_(box) {}

    std::ptrdiff_t length() const override { return box_.textLength(); }

    std::string textAt(std::ptrdiff_t start, std::ptrdiff_t length) const override {
        return box_.textAt(start, length);
    }

private:
    const RichTextBox& box_;
};

} // namespace blockhouse
