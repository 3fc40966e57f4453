#include "host/shell/typed_keys.h"

#include <QtCore/QVector>
#include <QtGui/QKeySequence>

namespace HostShell {

namespace {

using Kelvaris::System::Expected;

// Keys of Latin-1 characters bear the code of their upper case; beyond those, a keyboard driver gives text without a
// key.
int keyOf(uint character)
{
    if (character == '\n')
        return Qt::Key_Return;
    const uint upper = QChar::toUpper(character);
    return upper <= 0xff ? static_cast<int>(upper) : 0;
}

KeyPress typed(uint character)
{
    const bool shifted = character <= 0x7f && QChar::isUpper(character);
    return {keyOf(character), shifted ? Qt::ShiftModifier : Qt::NoModifier, QString::fromUcs4(&character, 1)};
}

TypedKeys typedText(const QString& text)
{
    TypedKeys keys{text, {}};
    for (const uint character : text.toUcs4())
        keys.presses.push_back(typed(character));
    return keys;
}

// What the key puts into a text field, as a keyboard driver would send it along.
QString textOf(int key, Qt::KeyboardModifiers modifiers)
{
    if (modifiers & ~Qt::KeyboardModifiers{Qt::ShiftModifier})
        return {};
    if (key < Qt::Key_Space || key > 0xff)
        return {};
    const auto character = QChar{key};
    return modifiers & Qt::ShiftModifier ? QString{character} : QString{character.toLower()};
}

Expected<TypedKeys, KeysError> namedKey(const QString& name)
{
    const QKeySequence sequence{name, QKeySequence::PortableText};
    const uint combined = sequence.count() == 1 ? static_cast<uint>(sequence[0]) : uint{Qt::Key_unknown};
    const int key = static_cast<int>(combined & ~uint{Qt::KeyboardModifierMask});
    if (key == 0 || key == Qt::Key_unknown)
        return KeysError{"there is no key \"" + name.toStdString() + "\"; a text to type stands in quotes"};
    const Qt::KeyboardModifiers modifiers{static_cast<int>(combined & uint{Qt::KeyboardModifierMask})};
    return TypedKeys{name, {{key, modifiers, textOf(key, modifiers)}}};
}

bool isQuote(QChar character)
{
    return character == QLatin1Char{'"'} || character == QLatin1Char{'\''};
}

/// Takes words off the front of a text.
class KeyReader
{
public:
    explicit KeyReader(const QString& text) : m_rest{text.trimmed()} {}

    bool atEnd() const { return m_rest.isEmpty(); }

    Expected<TypedKeys, KeysError> next() { return isQuote(m_rest.front()) ? quoted() : named(); }

private:
    Expected<TypedKeys, KeysError> quoted()
    {
        const int end = m_rest.indexOf(m_rest.front(), 1);
        if (end < 0)
            return KeysError{"a quote is not closed: " + m_rest.toStdString()};
        return typedText(take(end + 1).mid(1, end - 1));
    }

    Expected<TypedKeys, KeysError> named()
    {
        const int blank = m_rest.indexOf(QLatin1Char{' '});
        return namedKey(take(blank < 0 ? m_rest.size() : blank));
    }

    QString take(int length)
    {
        QString word = m_rest.left(length);
        m_rest = m_rest.mid(length).trimmed();
        return word;
    }

    QString m_rest;
};

} // namespace

Expected<std::vector<TypedKeys>, KeysError> parseKeys(const QString& text)
{
    std::vector<TypedKeys> all;
    KeyReader reader{text};
    while (!reader.atEnd()) {
        auto keys = reader.next();
        if (!keys)
            return keys.error();
        all.push_back(std::move(*keys));
    }
    return all;
}

} // namespace HostShell
