// The picture of a cone penetrometer on the splash and the open-file screen, drawn
// rather than loaded so that it stays sharp at any size: the rods, the friction
// sleeve, the conical tip and the soil layers it is pushed through.
#pragma once

#include <QWidget>

namespace pemlo {

class ConePicture : public QWidget {
public:
    explicit ConePicture(QWidget* parent = nullptr);

protected:
    void paintEvent(QPaintEvent* event) override;
};

}  // namespace pemlo
