#pragma once

#include "model/OutlineEntry.h"
#include "widgets/Sheet.h"

class QColor;
class QLineEdit;

namespace leafwright {

/// Asks for the colour of titles: some to be pressed, any other by its name or from the system's colours.
class TitleColorSheet final : public Sheet {
    Q_OBJECT

public:
    /// @param color what is proposed; absent for the colour that viewers give titles
    explicit TitleColorSheet(const std::optional<OutlineEntry::Color> &color);

    /// What a tag of the buttons stands for: the colour in the field, or none.
    std::optional<OutlineEntry::Color> chosen(int returnCode) const;

private:
    enum Tag : int { Cancel, Set, None };

    void addSwatches();
    void choose(const QColor &color);
    void chooseAnother();

    std::optional<OutlineEntry::Color> proposed_;
    QLineEdit *field_;
};

}  // namespace leafwright
