#include "host/shell/with_label.h"

#include <QtWidgets/QLabel>
#include <QtWidgets/QVBoxLayout>

namespace HostShell {

QWidget* withLabel(const QString& text, QWidget* pane)
{
    auto* box = new QWidget;
    auto* layout = new QVBoxLayout{box};
    layout->setContentsMargins(0, 0, 0, 0);
    auto* label = new QLabel{text};
    label->setBuddy(pane);
    pane->setAccessibleName(QString{text}.remove(QLatin1Char{'&'}));
    layout->addWidget(label);
    layout->addWidget(pane);
    return box;
}

} // namespace HostShell
