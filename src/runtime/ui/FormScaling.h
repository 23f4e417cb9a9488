// Screens laid out in twips: each control sits at its design rectangle and scales
// with the window, fonts included; the form-resizing settings a screen gives become
// its smallest window size. 15 twips make one logical pixel at the design scale.
#pragma once

#include <QRect>
#include <QString>
#include <QWidget>
#include <vector>

namespace pemlo {

constexpr double TwipsPerPixel = 15.0;

struct TwipsRect {
    int left = 0;
    int top = 0;
    int width = 0;
    int height = 0;
};

// A design line from (x1, y1) to (x2, y2), in twips.
struct TwipsLine {
    const char* name;
    int x1, y1, x2, y2;
};

class ScaledForm : public QWidget {
    Q_OBJECT
public:
    // name becomes the objectName; the client area is given in twips.
    ScaledForm(const QString& name, int clientWidthTwips, int clientHeightTwips, QWidget* parent = nullptr);

    // Places a child control at its design rectangle; from then on it scales with the form.
    void Place(QWidget* control, const TwipsRect& rect);
    // Design lines drawn on the form's background, scaled like the controls.
    void AddLines(const std::vector<TwipsLine>& lines);
    // The form-resizing control's width and height settings, in twips: the smallest
    // size the window may be made.
    void SetResizeMinimum(double widthTwips, double heightTwips);
    // Sets the window's size as a fraction of the available screen.
    void SizeToScreen(double widthFraction, double heightFraction);

    // A bar (the toolbar) across the top at its natural height; the design area,
    // and everything placed on it, starts below it.
    void SetTopBar(QWidget* bar);

    // Current size of the window over its design size; fonts follow the smaller.
    double ScaleX() const;
    double ScaleY() const;
    // A design rectangle in the window's current pixels (relative to the control's parent).
    QRect ToPixels(const TwipsRect& rect) const;

protected:
    void resizeEvent(QResizeEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    struct Placed {
        QWidget* control;
        TwipsRect rect;
        double designPointSize;
    };
    void Rescale();
    int TopOffset() const;

    int designWidth_;
    int designHeight_;
    std::vector<Placed> placed_;
    std::vector<TwipsLine> lines_;
    QWidget* topBar_ = nullptr;
    double minimumWidthTwips_ = 0.0;
    double minimumHeightTwips_ = 0.0;
};

}  // namespace pemlo
