#include "host/shell/call_arguments.h"

#include "host/shell/text_checks.h"

#include <QtCore/QJsonArray>
#include <QtCore/QJsonDocument>

namespace HostShell {

namespace {

using Kelvaris::System::Expected;

using Texts = std::vector<std::string>;

ArgumentError syntaxError(const std::string& word, const QJsonParseError& error)
{
    const auto bytes = static_cast<std::size_t>(error.offset);
    const auto characters = QString::fromStdString(word.substr(0, bytes)).toUcs4().size();
    return {"begins with \"[\" and is no JSON array of texts: " + error.errorString().toStdString() + " at character " +
            std::to_string(characters + 1)};
}

std::string kindOf(const QJsonValue& value)
{
    switch (value.type()) {
    case QJsonValue::Bool:
        return "a truth value";
    case QJsonValue::Double:
        return "a number";
    case QJsonValue::Array:
        return "an array";
    case QJsonValue::Object:
        return "an object";
    default:
        return "null";
    }
}

Expected<std::string, ArgumentError> elementText(const QJsonValue& value, int index)
{
    const std::string subject = "holds as element " + std::to_string(index + 1) + " ";
    if (!value.isString())
        return ArgumentError{subject + kindOf(value) + " where a text belongs"};
    if (const auto flaw = flawOf(value.toString()))
        return ArgumentError{subject + "a text with " + *flaw};
    return value.toString().toStdString();
}

} // namespace

Expected<Texts, ArgumentError> parseCallArgument(const std::string& word)
{
    if (word.empty() || word.front() != '[')
        return Texts{word};
    QJsonParseError error;
    const QJsonDocument document = QJsonDocument::fromJson(QByteArray::fromStdString(word), &error);
    if (error.error != QJsonParseError::NoError)
        return syntaxError(word, error);
    Texts texts;
    const QJsonArray elements = document.array();
    for (int i = 0; i < elements.size(); ++i) {
        auto text = elementText(elements[i], i);
        if (!text)
            return text.error();
        texts.push_back(std::move(*text));
    }
    return texts;
}

} // namespace HostShell
