#include "runtime/ui/Toolbar.h"

#include <QAccessible>
#include <QAccessibleWidget>
#include <QMenu>
#include <QToolButton>

#include "runtime/ui/AfterPress.h"
#include "runtime/ui/RunTimeErrorReport.h"

namespace pemlo {

// A command button that also carries a drop-down menu.
class DropDownButton : public QToolButton {
    Q_OBJECT
public:
    using QToolButton::QToolButton;
};

namespace {

// Qt offers assistive technology only "ShowMenu" on a button with a drop-down, so a
// screen reader could open the menu but never run the command: this interface
// offers both, as the mouse does.
class AccessibleDropDownButton : public QAccessibleWidget {
public:
    explicit AccessibleDropDownButton(QWidget* widget) : QAccessibleWidget(widget, QAccessible::ButtonMenu) {}

    QString text(QAccessible::Text t) const override
    {
        if (t != QAccessible::Name) return QAccessibleWidget::text(t);
        const QString name = Button()->accessibleName();
        return name.isEmpty() ? Button()->text() : name;
    }
    QStringList actionNames() const override
    {
        if (!widget()->isEnabled()) return {};
        return QStringList{pressAction(), showMenuAction()} + QAccessibleWidget::actionNames();
    }
    void doAction(const QString& action) override
    {
        if (!widget()->isEnabled()) return;
        if (action == pressAction()) {
            Button()->click();
        } else if (action == showMenuAction()) {
            // The menu runs an event loop of its own until it closes: shown after
            // the press has returned, as a modal window is.
            QToolButton* button = Button();
            AfterPress(button, [button] { button->showMenu(); });
        } else {
            QAccessibleWidget::doAction(action);
        }
    }
    QAccessible::State state() const override
    {
        QAccessible::State st = QAccessibleWidget::state();
        st.hasPopup = true;
        st.pressed = Button()->isDown();
        return st;
    }
    int childCount() const override { return Button()->menu() ? 1 : 0; }
    QAccessibleInterface* child(int index) const override
    {
        return index == 0 && Button()->menu() ? QAccessible::queryAccessibleInterface(Button()->menu()) : nullptr;
    }
    int indexOfChild(const QAccessibleInterface* child) const override
    {
        return child && Button()->menu() && child->object() == Button()->menu() ? 0 : -1;
    }

private:
    QToolButton* Button() const { return static_cast<QToolButton*>(widget()); }
};

QAccessibleInterface* DropDownAccessibility(const QString& className, QObject* object)
{
    if (className == QLatin1String(DropDownButton::staticMetaObject.className()) && object->isWidgetType())
        return new AccessibleDropDownButton(static_cast<QWidget*>(object));
    return nullptr;
}

// Menu texts are shown as written: an ampersand is a character, not a mnemonic
// ("Pemlo & Korvu (1999) Method" must not read "Pemlo _Korvu").
QString Literal(QString text) { return text.replace(QLatin1Char('&'), QStringLiteral("&&")); }

QMenu* BuildDropDown(QToolButton* button, const std::vector<ToolMenuEntry>& entries)
{
    auto* menu = new QMenu(button);
    for (const ToolMenuEntry& entry : entries) {
        // The entries are shown but raise nothing: only the button itself acts.
        QAction* action = menu->addAction(Literal(entry.caption));
        action->setObjectName(entry.key);
    }
    // An entry pressed over the accessibility bus is triggered without the click that
    // closes the menu for the mouse: it closes the menu as the click does.
    QObject::connect(menu, &QMenu::triggered, menu, &QMenu::hide);
    return menu;
}

QToolButton* MakeButton(QToolBar* bar, bool withMenu)
{
    if (!withMenu) return new QToolButton(bar);
    static const bool accessible = [] {
        QAccessible::installFactory(DropDownAccessibility);
        return true;
    }();
    (void)accessible;
    return new DropDownButton(bar);
}

}  // namespace

QToolBar* BuildToolbar(QWidget* parent, const std::vector<ToolButtonSpec>& buttons,
                       std::function<void(const QString& key)> onClick)
{
    auto* bar = new QToolBar(parent);
    bar->setObjectName(QStringLiteral("Toolbar1"));
    bar->setMovable(false);
    bar->setFloatable(false);
    bar->setToolButtonStyle(Qt::ToolButtonTextOnly);
    // A rule under the bar sets the commands apart from the screen's own controls.
    bar->setStyleSheet(QStringLiteral("QToolBar { border: none; border-bottom: 1px solid palette(mid); "
                                      "padding: 2px; spacing: 4px; }"));
    for (const ToolButtonSpec& wanted : buttons) {
        QToolButton* button = MakeButton(bar, !wanted.menu.empty());
        button->setObjectName(wanted.key);
        button->setText(wanted.caption);
        button->setToolButtonStyle(Qt::ToolButtonTextOnly);
        button->setAutoRaise(false);
        if (!wanted.tooltip.isEmpty()) {
            button->setToolTip(wanted.tooltip);
        }
        if (!wanted.menu.empty()) {
            button->setMenu(BuildDropDown(button, wanted.menu));
            button->setPopupMode(QToolButton::MenuButtonPopup);
        }
        const QString key = wanted.key;
        QObject::connect(button, &QToolButton::clicked, bar, [onClick, key] { Untrapped([&] { onClick(key); }); });
        bar->addWidget(button);
    }
    return bar;
}

}  // namespace pemlo

#include "Toolbar.moc"
