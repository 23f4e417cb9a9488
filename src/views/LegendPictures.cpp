#include "views/LegendPictures.h"

#include <QString>

// The pictures live in a resource of the static UI library; the linker keeps them
// only if someone asks for their initialiser by name.
static void InitLegendPictures() { Q_INIT_RESOURCE(views); }

namespace pemlo {

namespace {

QPixmap Picture(const char* name)
{
    static const bool initialised = (InitLegendPictures(), true);
    (void)initialised;
    return QPixmap(QStringLiteral(":/views/pictures/") + QString::fromLatin1(name));
}

}  // namespace

QPixmap SoilLegendPicture() { return Picture("SoilLegend.png"); }
QPixmap IndexLegendPicture() { return Picture("IndexLegend.png"); }

}  // namespace pemlo
