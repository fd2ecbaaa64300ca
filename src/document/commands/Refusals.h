#pragma once

#include <QString>

namespace leafwright {

class MyDocument;
struct ActionDescription;

/// Why a command does nothing to a document as it is now, in a sentence for people; null where it does
/// something. @param isReadOnly whether the file is, which takes the system to be asked
QString whyRefused(const MyDocument &document, const ActionDescription &command, bool isReadOnly);

}  // namespace leafwright
