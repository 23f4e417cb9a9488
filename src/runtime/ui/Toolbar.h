// The screens' command bars: buttons with a caption (trailing blanks kept), a key
// (the button's objectName) and a tooltip; a click reports the button's key, and
// the screen compares it exactly. One button may carry a drop-down menu whose
// entries raise nothing.
#pragma once

#include <QString>
#include <QToolBar>
#include <functional>
#include <vector>

namespace pemlo {

struct ToolMenuEntry {
    QString caption;
    QString key;
};

struct ToolButtonSpec {
    QString caption;
    QString key;
    QString tooltip;                    // empty: none
    std::vector<ToolMenuEntry> menu;    // empty: no drop-down
};

// Builds the toolbar `Toolbar1` of a screen; onClick receives the clicked button's key.
QToolBar* BuildToolbar(QWidget* parent, const std::vector<ToolButtonSpec>& buttons,
                       std::function<void(const QString& key)> onClick);

}  // namespace pemlo
