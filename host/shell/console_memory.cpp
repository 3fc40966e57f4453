#include "host/shell/console_memory.h"

#include <QtCore/QFileInfo>
#include <QtCore/QStandardPaths>

namespace HostShell {

namespace {

constexpr int mostRecentFiles = 10;

const QString recentKey = QStringLiteral("recentFiles");
const QString directoryKey = QStringLiteral("directory");

QString below(QStandardPaths::StandardLocation location, const char* name)
{
    return QStandardPaths::writableLocation(location) + QStringLiteral("/hollerwick/") + QString::fromLatin1(name);
}

} // namespace

ConsolePlaces ConsolePlaces::ofUser()
{
    return {below(QStandardPaths::GenericConfigLocation, "console.ini"),
            below(QStandardPaths::GenericDataLocation, "console-history.jsonl")};
}

ConsoleMemory::ConsoleMemory(const QString& settingsPath)
{
    if (!settingsPath.isEmpty())
        m_settings = std::make_unique<QSettings>(settingsPath, QSettings::IniFormat);
}

QStringList ConsoleMemory::recentFiles() const
{
    return value(recentKey).toStringList();
}

void ConsoleMemory::addRecentFile(const QString& path)
{
    const QString absolute = QFileInfo{path}.absoluteFilePath();
    QStringList files = recentFiles();
    files.removeAll(absolute);
    files.prepend(absolute);
    setValue(recentKey, QStringList{files.mid(0, mostRecentFiles)});
    setDirectory(QFileInfo{absolute}.absolutePath());
}

QString ConsoleMemory::directory() const
{
    return value(directoryKey).toString();
}

void ConsoleMemory::setDirectory(const QString& directory)
{
    setValue(directoryKey, directory);
}

QByteArray ConsoleMemory::state(const QString& name) const
{
    return value(name).toByteArray();
}

void ConsoleMemory::setState(const QString& name, const QByteArray& state)
{
    setValue(name, state);
}

QVariant ConsoleMemory::value(const QString& key) const
{
    return m_settings != nullptr ? m_settings->value(key) : m_unkept.value(key);
}

void ConsoleMemory::setValue(const QString& key, const QVariant& value)
{
    if (m_settings != nullptr)
        m_settings->setValue(key, value);
    else
        m_unkept.insert(key, value);
}

} // namespace HostShell
