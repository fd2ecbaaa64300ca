#pragma once

#include "pdf/PageText.h"

#include <memory>

namespace leafwright {

/// Pages as the heading finders need them: labels and text. A PDF document is one; tests make others.
class TextPages {
public:
    virtual ~TextPages() = default;

    virtual int pageCount() const = 0;
    /// The page's printed name, such as "iv". @param index 0-based, within range.
    virtual QString pageLabel(int index) const = 0;
    /// The page's text; never null. A page without text has an empty string. @param index 0-based.
    virtual std::shared_ptr<const PageText> pageText(int index) const = 0;
};

}  // namespace leafwright
