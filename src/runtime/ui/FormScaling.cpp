#include "runtime/ui/FormScaling.h"

#include <QGuiApplication>
#include <QPainter>
#include <QResizeEvent>
#include <QScreen>
#include <algorithm>
#include <cmath>

namespace pemlo {

namespace {

int Px(double twips, double scale) { return static_cast<int>(std::lround(twips / TwipsPerPixel * scale)); }

}  // namespace

ScaledForm::ScaledForm(const QString& name, int clientWidthTwips, int clientHeightTwips, QWidget* parent)
    : QWidget(parent), designWidth_(clientWidthTwips), designHeight_(clientHeightTwips)
{
    setObjectName(name);
    resize(Px(designWidth_, 1.0), Px(designHeight_, 1.0));
}

void ScaledForm::Place(QWidget* control, const TwipsRect& rect)
{
    const QFont font = control->font();
    const double pointSize = font.pointSizeF() > 0 ? font.pointSizeF() : QWidget::font().pointSizeF();
    placed_.push_back(Placed{control, rect, pointSize});
    Rescale();
}

void ScaledForm::AddLines(const std::vector<TwipsLine>& lines)
{
    lines_.insert(lines_.end(), lines.begin(), lines.end());
    update();
}

void ScaledForm::SetTopBar(QWidget* bar)
{
    topBar_ = bar;
    SetResizeMinimum(minimumWidthTwips_, minimumHeightTwips_);
    Rescale();
}

void ScaledForm::SetResizeMinimum(double widthTwips, double heightTwips)
{
    minimumWidthTwips_ = widthTwips;
    minimumHeightTwips_ = heightTwips;
    setMinimumSize(Px(widthTwips, 1.0), Px(heightTwips, 1.0) + TopOffset());
}

void ScaledForm::SizeToScreen(double widthFraction, double heightFraction)
{
    const QScreen* where = screen() != nullptr ? screen() : QGuiApplication::primaryScreen();
    if (where == nullptr) {
        return;
    }
    const QRect whole = where->geometry();
    const QSize size(static_cast<int>(whole.width() * widthFraction), static_cast<int>(whole.height() * heightFraction));
    resize(size.expandedTo(minimumSize()));
    const QRect available = where->availableGeometry();
    move(available.center() - QPoint(width() / 2, height() / 2));
}

int ScaledForm::TopOffset() const { return topBar_ != nullptr ? topBar_->sizeHint().height() : 0; }

double ScaledForm::ScaleX() const { return width() / (designWidth_ / TwipsPerPixel); }

double ScaledForm::ScaleY() const { return std::max(1, height() - TopOffset()) / (designHeight_ / TwipsPerPixel); }

QRect ScaledForm::ToPixels(const TwipsRect& rect) const
{
    const double sx = ScaleX();
    const double sy = ScaleY();
    // Edges are rounded, not sizes, so neighbours that touch in the design still touch.
    const int left = Px(rect.left, sx);
    const int top = Px(rect.top, sy);
    return QRect(left, top, Px(rect.left + rect.width, sx) - left, Px(rect.top + rect.height, sy) - top);
}

void ScaledForm::resizeEvent(QResizeEvent* event)
{
    QWidget::resizeEvent(event);
    Rescale();
}

void ScaledForm::Rescale()
{
    const double fontScale = std::min(ScaleX(), ScaleY());
    const int offset = TopOffset();
    if (topBar_ != nullptr) {
        topBar_->setGeometry(0, 0, width(), offset);
    }
    for (const Placed& item : placed_) {
        QRect box = ToPixels(item.rect);
        // Controls placed directly on the form sit below the top bar; controls inside
        // a frame are placed relative to their frame.
        if (item.control->parentWidget() == this) {
            box.translate(0, offset);
        }
        item.control->setGeometry(box);
        QFont font = item.control->font();
        font.setPointSizeF(std::max(1.0, item.designPointSize * fontScale));
        item.control->setFont(font);
    }
    update();
}

void ScaledForm::paintEvent(QPaintEvent* event)
{
    QWidget::paintEvent(event);
    if (lines_.empty()) {
        return;
    }
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing, true);
    painter.setPen(QPen(palette().color(QPalette::Dark), 1.0));
    const double sx = ScaleX();
    const double sy = ScaleY();
    const double offset = TopOffset();
    for (const TwipsLine& line : lines_) {
        painter.drawLine(QPointF(line.x1 / TwipsPerPixel * sx, line.y1 / TwipsPerPixel * sy + offset),
                         QPointF(line.x2 / TwipsPerPixel * sx, line.y2 / TwipsPerPixel * sy + offset));
    }
}

}  // namespace pemlo
