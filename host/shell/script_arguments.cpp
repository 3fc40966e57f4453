#include "host/shell/script_arguments.h"

#include "host/shell/text_checks.h"

namespace HostShell {

namespace {

using Kelvaris::System::Expected;

using Texts = std::vector<std::string>;

quint32 lengthOf(const QJSValue& array)
{
    return array.property(QStringLiteral("length")).toUInt();
}

std::string kindOf(const QJSValue& value)
{
    if (value.isUndefined())
        return "undefined";
    if (value.isNull())
        return "null";
    if (value.isNumber())
        return "a number";
    if (value.isBool())
        return "a truth value";
    if (value.isCallable())
        return "a function";
    return value.isArray() ? "an array" : "an object";
}

Expected<std::string, ScriptArgumentError> toText(const QJSValue& value, const std::string& subject)
{
    if (!value.isString())
        return ScriptArgumentError{subject + " is " + kindOf(value) + ", not a text"};
    const QString text = value.toString();
    if (const auto flaw = flawOf(text))
        return ScriptArgumentError{subject + " holds " + *flaw};
    return text.toStdString();
}

Expected<Texts, ScriptArgumentError> toTexts(const QJSValue& value, const std::string& subject)
{
    Texts texts;
    for (quint32 i = 0; i < lengthOf(value); ++i) {
        auto text = toText(value.property(i), "element " + std::to_string(i + 1) + " of " + subject);
        if (!text)
            return text.error();
        texts.push_back(std::move(*text));
    }
    return texts;
}

Expected<Texts, ScriptArgumentError> toArgument(const QJSValue& value, const std::string& subject)
{
    if (value.isArray())
        return toTexts(value, subject);
    auto text = toText(value, subject);
    if (!text)
        return ScriptArgumentError{text.error().text + (value.isString() ? "" : " or an array of texts")};
    return Texts{std::move(*text)};
}

} // namespace

Expected<std::vector<Texts>, ScriptArgumentError> toCallArguments(const QJSValue& values)
{
    std::vector<Texts> arguments;
    for (quint32 i = 0; i < lengthOf(values); ++i) {
        auto argument = toArgument(values.property(i), "argument " + std::to_string(i + 1));
        if (!argument)
            return argument.error();
        arguments.push_back(std::move(*argument));
    }
    return arguments;
}

} // namespace HostShell
