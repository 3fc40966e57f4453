#include "script/schematic_bundle_handlers.h"

#include "authoring/schematic_bundle_building.h"
#include "authoring/schematic_hierarchy.h"
#include "script/arguments.h"
#include "script/results.h"

#include <QtCore/QString>
#include <QtCore/QStringList>

#include <string>

namespace Script {

using namespace Kelvaris::System;
using IO::OpcPackaging::OpcPackagePartUri;
using Kelvaris::FUNC_ERROR;
using Kelvaris::FUNC_OK;

namespace {

QString toQString(const String& text)
{
    return QString::fromStdWString(text.toStdWString());
}

} // namespace

FUNC_ERROR createSchematicBundle(FuncCallFrame frame)
{
    writeResult(frame, Authoring::createSchematicBundle());
    return FUNC_OK;
}

FUNC_ERROR setRootSchematic(FuncCallFrame frame)
{
    const FilePath2 schematic = toFilePath2(textArgument(frame, 0));
    const std::string bundleId = textArgument(frame, 1).toLegacyUtf8();
    writeResult(frame, Authoring::setRootSchematic(schematic, bundleId).data());
    return FUNC_OK;
}

FUNC_ERROR addDescendantSchematic(FuncCallFrame frame)
{
    const FilePath2 schematic = toFilePath2(textArgument(frame, 0));
    const FilePath2 parentSchematic = toFilePath2(textArgument(frame, 1));
    const OpcPackagePartUri parentUri{textArgument(frame, 2).toStdWString().c_str()};
    const std::string bundleId = textArgument(frame, 3).toLegacyUtf8();
    writeResult(frame, Authoring::addDescendantSchematic(schematic, parentSchematic, parentUri, bundleId).data());
    return FUNC_OK;
}

FUNC_ERROR writeSchematicBundle(FuncCallFrame frame)
{
    const FilePath2 target = toFilePath2(textArgument(frame, 0));
    const std::string bundleId = textArgument(frame, 1).toLegacyUtf8();
    Authoring::writeSchematicBundle(target, bundleId);
    writeResult(frame, "OK");
    return FUNC_OK;
}

FUNC_ERROR closeSchematicBundle(FuncCallFrame frame)
{
    const std::string bundleId = textArgument(frame, 0).toLegacyUtf8();
    Authoring::closeSchematicBundle(bundleId);
    writeResult(frame, "OK");
    return FUNC_OK;
}

FUNC_ERROR clearAllSchematicBundles(FuncCallFrame frame)
{
    Authoring::closeAllSchematicBundles();
    writeResult(frame, "OK");
    return FUNC_OK;
}

FUNC_ERROR identifyDescendants(FuncCallFrame frame)
{
    const QString root = toQString(textArgument(frame, 0));
    QStringList records;
    for (const String& record : textsArgument(frame, 1))
        records.append(toQString(record));

    const QStringList answers = Authoring::identifyDescendants(root, records);
    ResultArray results{frame, answers.size()};
    for (const QString& answer : answers)
        results.append(answer.toStdWString());
    return FUNC_OK;
}

} // namespace Script
