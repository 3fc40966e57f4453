#include "editors/expansion_limit.h"

#include <QtCore/QEvent>
#include <QtGui/QKeyEvent>
#include <QtWidgets/QTreeView>

namespace {

constexpr int levels = 1'000;

class ExpansionLimit final : public QObject
{
public:
    explicit ExpansionLimit(QTreeView* view) : QObject{view}, m_view{*view} { view->installEventFilter(this); }

    bool eventFilter(QObject* watched, QEvent* event) override
    {
        if (event->type() != QEvent::KeyPress || static_cast<QKeyEvent*>(event)->key() != Qt::Key_Asterisk)
            return QObject::eventFilter(watched, event);
        if (m_view.itemsExpandable())
            m_view.expandRecursively(m_view.currentIndex(), levels);
        return true;
    }

private:
    QTreeView& m_view;
};

} // namespace

void limitExpansion(QTreeView* view)
{
    new ExpansionLimit{view};
}
