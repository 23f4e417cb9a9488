#include "runtime/AfterPress.h"

#include <QMetaObject>
#include <QObject>

#include "runtime/RunTimeErrorReport.h"

namespace pemlo {

void AfterPress(QObject* context, std::function<void()> handler)
{
    QMetaObject::invokeMethod(
        context, [handler = std::move(handler)] { Untrapped(handler); }, Qt::QueuedConnection);
}

}  // namespace pemlo
