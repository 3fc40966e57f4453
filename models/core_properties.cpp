#include "models/core_properties.h"

#include "kelvaris/system/qt/text_bridge.h"

#include <array>
#include <cstddef>
#include <variant>

using namespace Kelvaris::System;
using namespace Kelvaris::System::IO::OpcPackaging;

namespace CoreProperties {

namespace {

template <class T>
struct Access
{
    using Value = T;

    Expected<T, ErrorCode2> (OpcPackageProperties::*get)() const;
    Expected<void, ErrorCode2> (OpcPackageProperties::*set)(const T&);
};

struct Property
{
    const char* name;
    std::variant<Access<String2>, Access<DateTime>, Access<StringVector2>> access;
};

using P = OpcPackageProperties;
using Text = Access<String2>;
using Time = Access<DateTime>;
using Texts = Access<StringVector2>;

const std::array<Property, count>& table()
{
    static const std::array<Property, count> properties{{
        {"Category", Text{&P::category, &P::setCategory}},
        {"Content Status", Text{&P::contentStatus, &P::setContentStatus}},
        {"Created", Time{&P::created, &P::setCreated}},
        {"Creator", Text{&P::creator, &P::setCreator}},
        {"Description", Text{&P::description, &P::setDescription}},
        {"Identifier", Text{&P::identifier, &P::setIdentifier}},
        {"Keywords", Texts{&P::keywords, &P::setKeywords}},
        {"Language", Text{&P::language, &P::setLanguage}},
        {"Last Modified By", Text{&P::lastModifiedBy, &P::setLastModifiedBy}},
        {"Last Printed", Time{&P::lastPrinted, &P::setLastPrinted}},
        {"Modified", Time{&P::modified, &P::setModified}},
        {"Revision", Text{&P::revision, &P::setRevision}},
        {"Subject", Text{&P::subject, &P::setSubject}},
        {"Title", Text{&P::title, &P::setTitle}},
        {"Version", Text{&P::version, &P::setVersion}},
    }};
    return properties;
}

const Property& property(int key)
{
    return table().at(static_cast<std::size_t>(key));
}

QString toText(const String2& value)
{
    return utf8ToQString(value).value();
}

QString toText(const DateTime& value)
{
    return toText(value.toXSDDateTime().value());
}

// Joined with a blank and split at semicolons: what is shown is for reading, what is typed names its keywords one by
// one. Two keywords that are committed as they are shown become a single one, and users count on that.
QString toText(const StringVector2& value)
{
    return toText(value.join(u8' ').value());
}

String2 fromText(const Text&, const String2& text)
{
    return text;
}

DateTime fromText(const Time&, const String2& text)
{
    return DateTime::fromXSDDateTime(text).value();
}

StringVector2 fromText(const Texts&, const String2& text)
{
    return text.split(u8';').value();
}

} // namespace

QString name(int key)
{
    return QLatin1String{property(key).name};
}

QString read(const OpcPackageProperties& properties, int key)
{
    return std::visit([&](const auto& access) { return toText((properties.*access.get)().valueOr({})); },
                      property(key).access);
}

void write(OpcPackageProperties& properties, int key, const QString& text)
{
    const String2 utf8 = qStringToUTF8(text).value();
    std::visit(
        [&](const auto& access) {
            // What was typed stays in the cell, taken or not: a refusal has never been reported there.
            (void)(properties.*access.set)(fromText(access, utf8));
        },
        property(key).access);
}

} // namespace CoreProperties
