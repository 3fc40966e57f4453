#include "host/shell/bundle_texts.h"

#include "host/shell/command_output.h"
#include "kelvaris/system/io/opc_packaging/opc_error.h"

#include <QtCore/QJsonArray>

namespace HostShell {

using namespace Kelvaris::System;
using IO::OpcPackaging::opc_error_category;
using IO::OpcPackaging::OpcError;

namespace {

/// The value, an empty one for a property that is not set, or the error of reading.
template <class Value>
Expected<Value, ErrorCode2> orEmpty(Expected<Value, ErrorCode2> property)
{
    const ErrorCode2 notSet{static_cast<int>(OpcError::propertyNotSet), opc_error_category()};
    if (property || !(property.error() == notSet))
        return property;
    return Value{};
}

} // namespace

Expected<BundleTexts, ErrorCode2> textsOf(IO::OpcPackaging::OpcPackage& package)
{
    const auto& properties = package.packageProperties();
    const auto title = orEmpty(properties.title());
    if (!title)
        return title.error();
    const auto description = orEmpty(properties.description());
    if (!description)
        return description.error();
    const auto keywords = orEmpty(properties.keywords());
    if (!keywords)
        return keywords.error();
    BundleTexts texts{toText(*title), toText(*description), {}};
    for (std::size_t i = 0; i < keywords->size(); ++i)
        texts.keywords.push_back(toText(keywords->data()[i]));
    return texts;
}

QJsonObject toJson(const BundleTexts& texts)
{
    QJsonArray keywords;
    for (const std::string& keyword : texts.keywords)
        keywords.append(QString::fromStdString(keyword));
    return {{QStringLiteral("title"), QString::fromStdString(texts.title)},
            {QStringLiteral("description"), QString::fromStdString(texts.description)},
            {QStringLiteral("keywords"), keywords}};
}

std::string joined(const std::vector<std::string>& texts)
{
    std::string all;
    for (const std::string& text : texts)
        all += (all.empty() ? "" : ", ") + text;
    return all;
}

} // namespace HostShell
