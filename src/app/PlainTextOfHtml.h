#pragma once

#include <QString>

namespace leafwright {

/// What some HTML says, as plain text: its paragraphs with empty lines between them, its list items with
/// bullets, and nothing of its links, images, scripts and styles. What is too long is cut. Takes time by the
/// length of the text, whatever it holds.
QString plainTextOfHtml(const QString &html);

}  // namespace leafwright
