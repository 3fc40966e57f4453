#include "host/shell/file_opening.h"

#include "kelvaris/system/io/bundle/barrel_of_examples_bundle.h"
#include "kelvaris/system/io/bundle/example_bundle.h"
#include "kelvaris/system/io/bundle/scriptable_bundle.h"
#include "kelvaris/system/io/opc_packaging/opc_package.h"
#include "kelvaris/system/qt/path_bridge.h"
#include "kelvaris/system/qt/text_bridge.h"

#include <QtCore/QFileInfo>

namespace HostShell {

namespace {

using namespace Kelvaris::System;
using namespace Kelvaris::System::IO::Bundle;

using IO::OpcPackaging::OpcPackage;
using IO::OpcPackaging::OpcPackageOpenFlag;

template <class Bundle>
bool opensAs(const FilePath2& path)
{
    return Bundle::open(path).hasValue();
}

const char* windowFor(const FilePath2& path)
{
    if (opensAs<BarrelOfExamplesBundle>(path))
        return "_create_examples_bundle_editor";
    if (opensAs<ExampleBundle>(path))
        return "_create_example_bundle_editor";
    if (opensAs<ScriptableBundle>(path))
        return "_proto_scriptable_bundle_editor";
    return "_bundle_viewer";
}

FileOpening inWindow(const char* function, const QString& path)
{
    return {.call = WindowCall{function, {{path.toStdString()}}}};
}

} // namespace

FileOpening openingOf(const QString& path)
{
    if (QFileInfo{path}.isDir())
        return inWindow("_proto_example_browser", path);
    if (path.endsWith(QStringLiteral(".js"), Qt::CaseInsensitive))
        return {.isScript = true};
    const FilePath2 file = toFilePath2(path);
    const auto package = OpcPackage::open(file, OpcPackageOpenFlag::readOnDemand);
    if (!package)
        return {.failure = utf8ToQString(package.error().message()).valueOr({})};
    return inWindow(windowFor(file), path);
}

} // namespace HostShell
