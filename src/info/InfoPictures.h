// The pictures of the information windows, drawn by the program itself: a cone
// penetrometer pushed into layered ground, and a help sign.
#pragma once

#include <QPixmap>

namespace pemlo {

QPixmap DrawConePicture(int size);
QPixmap DrawHelpPicture(int size);

}  // namespace pemlo
