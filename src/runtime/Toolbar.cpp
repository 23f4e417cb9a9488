#include "runtime/Toolbar.h"

#include <QMenu>
#include <QToolButton>

#include "runtime/RunTimeErrorReport.h"

namespace pemlo {

namespace {

QMenu* BuildDropDown(QToolButton* button, const std::vector<ToolMenuEntry>& entries)
{
    auto* menu = new QMenu(button);
    for (const ToolMenuEntry& entry : entries) {
        // The entries are shown but raise nothing: only the button itself acts.
        QAction* action = menu->addAction(entry.caption);
        action->setObjectName(entry.key);
    }
    return menu;
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
        auto* button = new QToolButton(bar);
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
