#pragma once

#include <QtCore/QByteArray>
#include <QtCore/QSettings>
#include <QtCore/QString>
#include <QtCore/QStringList>

#include <memory>

namespace HostShell {

/// Where the console keeps what it remembers. An empty path stands for nothing that outlives the window.
struct ConsolePlaces
{
    QString settings;
    QString history;

    /// Below the user's directories for configuration and data.
    static ConsolePlaces ofUser();
};

/// What the console remembers from one time to the next: where its window stood, the files that were opened.
class ConsoleMemory
{
public:
    explicit ConsoleMemory(const QString& settingsPath);

    /// Newest first.
    QStringList recentFiles() const;
    void addRecentFile(const QString& path);

    /// The directory in which file dialogs start.
    QString directory() const;
    void setDirectory(const QString& directory);

    QByteArray state(const QString& name) const;
    void setState(const QString& name, const QByteArray& state);

private:
    QVariant value(const QString& key) const;
    void setValue(const QString& key, const QVariant& value);

    std::unique_ptr<QSettings> m_settings; ///< null when nothing is kept
    QVariantMap m_unkept;
};

} // namespace HostShell
