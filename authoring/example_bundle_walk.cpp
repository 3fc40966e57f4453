#include "authoring/example_bundle_walk.h"

#include "authoring/path_conversion.h"
#include "kelvaris/system/io/bundle/example_bundle.h"
#include "kelvaris/system/qt/path_bridge.h"
#include "kelvaris/system/qt/text_bridge.h"
#include "kelvaris/system/try_invoke.h"

#include <QtCore/QDebug>

#include <cstddef>
#include <filesystem>
#include <optional>
#include <string>
#include <system_error>
#include <utility>

namespace Authoring {

namespace fs = std::filesystem;

using namespace Kelvaris::System;
using IO::Bundle::ExampleBundle;

namespace {

bool looksLikeAnExampleBundle(const fs::directory_entry& entry)
{
    // a link that leads in a circle is no regular file either, and no reason to end the walk
    std::error_code noStatus;
    return entry.is_regular_file(noStatus) && entry.path().extension() == ".zip" &&
           entry.path().native().ends_with(fs::path{".kvbdl.zip"}.native());
}

QString toText(const String2& text)
{
    return utf8ToQString(text).value();
}

QStringList toTexts(const StringVector2& texts)
{
    QStringList list;
    list.reserve(static_cast<int>(texts.size()));
    for (std::size_t index = 0; index < texts.size(); ++index)
        list.append(toText(texts.data()[index]));
    return list;
}

std::optional<PrototypeExamplesEntry> readEntry(const fs::path& path)
{
    const auto bundle = tryInvoke([&] { return ExampleBundle::open(toFilePath2(path)); });
    if (!bundle)
        return {};
    const auto title = bundle->title();
    if (!title) {
        qDebug().noquote().nospace() << "error bundle has no title: " << toQString(toFilePath2(path));
        return {};
    }
    return PrototypeExamplesEntry{toText(*title), toText(bundle->description().valueOr({})),
                                  toTexts(bundle->keywords().valueOr({}))};
}

} // namespace

std::vector<PrototypeExamplesEntry> findExampleBundles(const FilePath2& directory)
{
    std::vector<PrototypeExamplesEntry> entries;
    for (const fs::directory_entry& file : fs::recursive_directory_iterator{toStdPath(directory)}) {
        if (!looksLikeAnExampleBundle(file))
            continue;
        if (auto entry = readEntry(file.path()))
            entries.push_back(std::move(*entry));
    }
    return entries;
}

} // namespace Authoring
