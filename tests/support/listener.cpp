#include "support/listener.h"

#include <private/qguiapplication_p.h>
#include <qpa/qplatformaccessibility.h>
#include <qpa/qplatformintegration.h>

namespace {

Listener::Hear hearEvent;

void setListening(bool on)
{
    // QAccessible::setActive() tells observers alone.
    QGuiApplicationPrivate::platformIntegration()->accessibility()->setActive(on);
}

} // namespace

Listener::Listener(Hear hear)
{
    hearEvent = std::move(hear);
    QAccessible::installUpdateHandler([](QAccessibleEvent *event) {
        if (hearEvent)
            hearEvent(*event);
    });
    setListening(true);
}

Listener::~Listener()
{
    setListening(false);
    QAccessible::installUpdateHandler(nullptr);
    hearEvent = nullptr;
}
