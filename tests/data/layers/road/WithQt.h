// Qt in the Qt-free library.
#include <QString>
