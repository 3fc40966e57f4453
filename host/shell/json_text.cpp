#include "host/shell/json_text.h"

#include <QtCore/QJsonArray>
#include <QtCore/QJsonDocument>

namespace HostShell {

std::string toJson(const std::vector<std::string>& texts)
{
    QJsonArray array;
    for (const std::string& text : texts)
        array.append(QString::fromStdString(text));
    return QJsonDocument{array}.toJson(QJsonDocument::Compact).toStdString();
}

} // namespace HostShell
