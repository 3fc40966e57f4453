#include "tests/windows/faults.h"

#include <QtGui/QAccessible>
#include <QtTest/QTest>
#include <QtWidgets/QAbstractButton>
#include <QtWidgets/QAction>
#include <QtWidgets/QApplication>
#include <QtWidgets/QHeaderView>
#include <QtWidgets/QLabel>
#include <QtWidgets/QLayout>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QMenu>
#include <QtWidgets/QMenuBar>
#include <QtWidgets/QStyle>
#include <QtWidgets/QTabBar>
#include <QtWidgets/QToolBar>
#include <QtWidgets/QToolButton>

#include <algorithm>
#include <cmath>
#include <set>

namespace Faults {

namespace {

std::string nameOf(const QWidget& widget)
{
    return std::string{widget.metaObject()->className()} + " " + widget.objectName().toStdString();
}

template <class Widget>
std::vector<Widget*> visible(const QWidget& window)
{
    std::vector<Widget*> found;
    for (Widget* widget : window.findChildren<Widget*>()) {
        if (widget->isVisible() && widget->window() == &window)
            found.push_back(widget);
    }
    return found;
}

void need(Lines& faults, const QWidget& widget, const QString& text, QSize needed, QSize given)
{
    if (needed.width() <= given.width() && needed.height() <= given.height())
        return;
    faults.push_back(nameOf(widget) + ": \"" + text.toStdString() + "\" needs " + std::to_string(needed.width()) + "x" +
                     std::to_string(needed.height()) + " and has " + std::to_string(given.width()) + "x" +
                     std::to_string(given.height()));
}

QSize textSize(const QWidget& widget, const QString& text)
{
    return widget.fontMetrics().size(Qt::TextShowMnemonic | Qt::TextSingleLine, text);
}

void checkHeader(Lines& faults, const QHeaderView& header)
{
    const int margins = 2 * header.style()->pixelMetric(QStyle::PM_HeaderMargin, nullptr, &header);
    for (int i = 0; i < header.count(); ++i) {
        const QString text = header.model()->headerData(i, header.orientation()).toString();
        if (header.orientation() == Qt::Horizontal && !header.isSectionHidden(i))
            need(faults, header, text, textSize(header, text) + QSize{margins, 0},
                 {header.sectionSize(i), header.height()});
    }
}

void checkTabs(Lines& faults, const QTabBar& bar)
{
    for (int i = 0; i < bar.count(); ++i) {
        const QRect place = bar.tabRect(i).intersected(bar.rect());
        need(faults, bar, bar.tabText(i), textSize(bar, bar.tabText(i)), place.size());
    }
}

qreal luminance(const QColor& colour)
{
    const auto linear = [](qreal value) {
        return value <= 0.03928 ? value / 12.92 : std::pow((value + 0.055) / 1.055, 2.4);
    };
    return 0.2126 * linear(colour.redF()) + 0.7152 * linear(colour.greenF()) + 0.0722 * linear(colour.blueF());
}

qreal contrast(const QColor& first, const QColor& second)
{
    const qreal a = luminance(first);
    const qreal b = luminance(second);
    return (std::max(a, b) + 0.05) / (std::min(a, b) + 0.05);
}

bool takesTab(const QWidget& widget)
{
    return widget.isEnabled() && (widget.focusPolicy() & Qt::TabFocus) != 0 && widget.focusProxy() == nullptr;
}

std::vector<QWidget*> tabStops(const QWidget& window)
{
    std::vector<QWidget*> stops = visible<QWidget>(window);
    std::erase_if(stops, [](const QWidget* widget) { return !takesTab(*widget); });
    if (takesTab(window))
        stops.insert(stops.begin(), const_cast<QWidget*>(&window));
    return stops;
}

QRect placeOf(const QWidget& widget)
{
    return {widget.mapToGlobal(QPoint{}), widget.size()};
}

// One reads columns side by side from left to right, each from top to bottom.
bool goesBack(const QWidget& from, const QWidget& to)
{
    const QRect a = placeOf(from);
    const QRect b = placeOf(to);
    const bool isAbove = b.bottom() <= a.top() && b.left() < a.right();
    const bool isLeft = b.right() <= a.left() && b.top() < a.bottom();
    return isAbove || isLeft;
}

QString accessibleName(QWidget& widget)
{
    QAccessibleInterface* interface = QAccessible::queryAccessibleInterface(&widget);
    return interface == nullptr ? QString{} : interface->text(QAccessible::Name);
}

// A heading names a page, not a control; a message and its mark are read out with their dialog; the boxes of Qt's own
// file dialog have names of their own.
bool isHeading(const QLabel& label)
{
    static const std::set<QString> headings{
        QStringLiteral("browsePageTitle"),
        QStringLiteral("configurePageTitle"),
        QStringLiteral("exampleName"),
        QStringLiteral("locationWarningLabel"),
        QStringLiteral("qt_msgbox_label"),
        QStringLiteral("qt_msgboxex_icon_label"),
        QStringLiteral("qt_msgbox_informativelabel"),
        QStringLiteral("lookInLabel"),
        QStringLiteral("fileTypeLabel"),
    };
    return headings.count(label.objectName()) != 0 || label.text().isEmpty();
}

QChar mnemonicOf(const QString& text)
{
    const QKeySequence sequence = QKeySequence::mnemonic(text);
    return sequence.isEmpty() ? QChar{} : QChar{sequence[0] & 0xffff};
}

} // namespace

Lines cutOffTexts(const QWidget& window)
{
    Lines faults;
    for (const QLabel* label : visible<QLabel>(window)) {
        const QSize needed = label->wordWrap() ? QSize{0, label->heightForWidth(label->width())} : label->sizeHint();
        need(faults, *label, label->text(), needed, label->size());
    }
    for (const QAbstractButton* button : visible<QAbstractButton>(window)) {
        if (!button->text().isEmpty())
            need(faults, *button, button->text(), button->sizeHint(), button->size());
    }
    for (const QLineEdit* field : visible<QLineEdit>(window))
        need(faults, *field, field->placeholderText(), textSize(*field, field->placeholderText()) + QSize{6, 0},
             field->size());
    for (const QHeaderView* header : visible<QHeaderView>(window))
        checkHeader(faults, *header);
    for (const QTabBar* bar : visible<QTabBar>(window))
        checkTabs(faults, *bar);
    for (QMenuBar* bar : visible<QMenuBar>(window)) {
        for (QAction* entry : bar->actions())
            need(faults, *bar, entry->text(), textSize(*bar, entry->text()),
                 bar->actionGeometry(entry).intersected(bar->rect()).size());
    }
    for (const QToolButton* more : visible<QToolButton>(window)) {
        if (more->objectName() == QStringLiteral("qt_toolbar_ext_button"))
            faults.push_back("a tool bar hides some of its tools");
        if (more->objectName() == QStringLiteral("ScrollLeftButton"))
            faults.push_back("a tab bar hides some of its tabs");
    }
    return faults;
}

Lines overlaps(const QWidget& window)
{
    Lines faults;
    for (const QLayout* layout : window.findChildren<QLayout*>()) {
        std::vector<const QWidget*> widgets;
        for (int i = 0; i < layout->count(); ++i) {
            const QWidget* widget = layout->itemAt(i)->widget();
            if (widget != nullptr && widget->isVisible() && layout->objectName() != QStringLiteral("qt_stacked"))
                widgets.push_back(widget);
        }
        for (std::size_t i = 0; i < widgets.size(); ++i) {
            for (std::size_t k = i + 1; k < widgets.size(); ++k) {
                if (widgets[i]->geometry().intersects(widgets[k]->geometry()))
                    faults.push_back(nameOf(*widgets[i]) + " lies over " + nameOf(*widgets[k]));
            }
        }
    }
    return faults;
}

Lines faintTexts(const QWidget& window)
{
    constexpr qreal least = 4.5;
    Lines faults;
    for (const QWidget* widget : visible<QWidget>(window)) {
        // what cannot be used now may step back
        if (!widget->isEnabled())
            continue;
        const QPalette& palette = widget->palette();
        const auto check = [&](QPalette::ColorRole text, QPalette::ColorRole background) {
            if (contrast(palette.color(text), palette.color(background)) < least)
                faults.push_back(nameOf(*widget) + ": colour " + std::to_string(text) + " on " +
                                 std::to_string(background));
        };
        check(widget->foregroundRole(), widget->backgroundRole());
        check(QPalette::Text, QPalette::Base);
        check(QPalette::HighlightedText, QPalette::Highlight);
        check(QPalette::Link, QPalette::Base);
    }
    return faults;
}

Lines namelessWidgets(const QWidget& window)
{
    Lines faults;
    for (QWidget* widget : tabStops(window)) {
        // a tab is read out by its own text
        const auto* bar = qobject_cast<const QTabBar*>(widget);
        const bool isNamed = bar != nullptr ? !bar->tabText(0).isEmpty() : !accessibleName(*widget).isEmpty();
        if (!isNamed)
            faults.push_back(nameOf(*widget));
    }
    return faults;
}

Lines labelsWithoutBuddy(const QWidget& window)
{
    Lines faults;
    for (const QLabel* label : visible<QLabel>(window)) {
        if (!isHeading(*label) && (label->buddy() == nullptr || label->buddy()->focusPolicy() == Qt::NoFocus))
            faults.push_back(nameOf(*label) + " \"" + label->text().toStdString() + "\"");
    }
    return faults;
}

Lines sharedMnemonics(const QWidget& window)
{
    Lines faults;
    QString seen;
    const auto see = [&](const QString& text) {
        const QChar mnemonic = mnemonicOf(text);
        if (!mnemonic.isNull() && seen.contains(mnemonic))
            faults.push_back("\"" + text.toStdString() + "\" has a mnemonic that is taken");
        seen += mnemonic;
    };
    for (const QMenuBar* bar : visible<QMenuBar>(window)) {
        for (const QAction* entry : bar->actions())
            see(entry->text());
    }
    for (const QLabel* label : visible<QLabel>(window)) {
        if (label->buddy() != nullptr)
            see(label->text());
    }
    for (const QAbstractButton* button : visible<QAbstractButton>(window)) {
        if (qobject_cast<const QToolBar*>(button->parentWidget()) == nullptr)
            see(button->text());
    }
    return faults;
}

Lines tabOrderFaults(QWidget& window)
{
    const std::vector<QWidget*> stops = tabStops(window);
    if (stops.empty())
        return {};
    Lines faults;
    std::set<const QWidget*> reached;
    // a window where nothing has the focus yet gives it to the first stop
    if (window.focusWidget() == nullptr)
        QTest::keyClick(&window, Qt::Key_Tab);
    int stepsBack = 0;
    std::string path;
    for (std::size_t i = 0; i < 2 * stops.size() + 20; ++i) {
        QWidget* from = QApplication::focusWidget();
        if (from == nullptr)
            return {"nothing has the focus"};
        const bool isNew = reached.insert(from).second;
        QTest::keyClick(from, Qt::Key_Tab);
        const QWidget* to = QApplication::focusWidget();
        if (to == nullptr || to == from || !isNew)
            continue;
        if (goesBack(*from, *to)) {
            ++stepsBack;
            path += nameOf(*from) + " to " + nameOf(*to) + "; ";
        }
    }
    for (const QWidget* stop : stops) {
        if (reached.count(stop) == 0)
            faults.push_back("Tab does not reach " + nameOf(*stop));
    }
    // one step leads from the end of the window to its beginning
    if (stepsBack > 1)
        faults.push_back("Tab goes back " + std::to_string(stepsBack) + " times: " + path);
    return faults;
}

Lines buttonsForTheMouseAlone(const QWidget& window)
{
    Lines faults;
    for (const QAbstractButton* button : visible<QAbstractButton>(window)) {
        if (takesTab(*button) || !button->isEnabled())
            continue;
        const auto* tool = qobject_cast<const QToolButton*>(button);
        const QAction* action = tool == nullptr ? nullptr : tool->defaultAction();
        const auto isMenu = [](const QWidget* widget) { return qobject_cast<const QMenu*>(widget) != nullptr; };
        const QList<QWidget*> places = action == nullptr ? QList<QWidget*>{} : action->associatedWidgets();
        if (std::none_of(places.begin(), places.end(), isMenu))
            faults.push_back(nameOf(*button) + " \"" + button->text().toStdString() + "\"");
    }
    return faults;
}

} // namespace Faults
