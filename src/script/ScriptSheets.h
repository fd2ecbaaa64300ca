#pragma once

#include "script/ScriptStep.h"

#include <optional>
#include <utility>
#include <vector>

class QWidget;

namespace leafwright {
class Sheet;
}

namespace leafwright::script {

/// A sheet as it was when it opened, and what ended it.
struct ShownSheet {
    QString title;
    std::vector<std::pair<QString, QJsonValue>> fields;  ///< Its inputs by outlet name, top to bottom.
    int tag = 0;                                         ///< Of the button pressed.
};

/// Fills in a sheet's fields as a step says, and presses a button. Throws StepFailure if the sheet has no
/// such field or button.
/// @param fields values by outlet name; those not named keep what they show
ShownSheet answerSheet(Sheet &sheet, const QJsonObject &fields, int tag);

/// The same for fields that stand in the window, in which what is typed takes effect at once.
/// @param bar what holds them; Escape is pressed there where the tag is 0
ShownSheet fillInBar(QWidget &bar, const QJsonObject &fields, int tag);

}  // namespace leafwright::script
