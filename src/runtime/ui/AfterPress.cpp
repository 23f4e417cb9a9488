#include "runtime/ui/AfterPress.h"

#include <QMetaObject>
#include <QObject>

#include "runtime/ui/RunTimeErrorReport.h"

namespace pemlo {

void AfterPress(QObject* context, std::function<void()> handler)
{
    QMetaObject::invokeMethod(
        context, [handler = std::move(handler)] { Untrapped(handler); }, Qt::QueuedConnection);
}

}  // namespace pemlo
