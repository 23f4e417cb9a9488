// An include up, in angle brackets.
#include <road/WithQt.h>
// Qt by its lower-case header.
#include <qstring.h>
