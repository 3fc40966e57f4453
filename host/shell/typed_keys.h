#pragma once

#include "kelvaris/system/expected.h"

#include <QtCore/QString>
#include <QtCore/Qt>

#include <string>
#include <vector>

namespace HostShell {

/// One press of a key.
struct KeyPress
{
    int key = 0; ///< of `Qt::Key`; 0 for a character without a key of its own
    Qt::KeyboardModifiers modifiers = Qt::NoModifier;
    QString text; ///< what the key types, empty for keys such as Tab
};

/// What --keys gives between two blanks: one key with its modifiers, or a whole text.
struct TypedKeys
{
    QString name; ///< as it was written, without quotes; for the names of pictures
    std::vector<KeyPress> presses;
};

/// What is wrong with the text behind --keys, as one sentence.
struct KeysError
{
    std::string text;
};

/// Reads "Tab Ctrl+A 'two words' Return": names as `QKeySequence` reads them, anything else in single or double quotes.
Kelvaris::System::Expected<std::vector<TypedKeys>, KeysError> parseKeys(const QString& text);

} // namespace HostShell
