#include "soak/session.h"

#include "simulation.h"
#include "toolparts.h"

#include <dlfcn.h>
#include <QCheckBox>
#include <QCoreApplication>
#include <QEvent>
#include <QEventLoop>
#include <QSlider>
#include <QTabWidget>
#include <QTest>
#include <QTimer>

namespace {

constexpr int boardId = 1001;

decltype(&orvexsim_send) sendFunction()
{
    void *library = dlopen("liborvexboardex.so.1", RTLD_NOW | RTLD_NOLOAD);
    return library ? reinterpret_cast<decltype(&orvexsim_send)>(dlsym(library, "orvexsim_send")) : nullptr;
}

} // namespace

Session::Session(const std::vector<LoadedPlugin> &plugins, const Plan &plan)
    : plugins_(plugins)
    , plan_(plan)
    , window_(plugins)
{
}

QString Session::prepare()
{
    QWidget *tool = window_.openTool(plugins_.front());
    QTabWidget *tabs = tool ? tabsOf(*tool) : nullptr;
    const int index = tabs ? tabCaptions(*tabs).indexOf(plan_.tab) : -1;
    if (index < 0)
        return QStringLiteral("no tab ") + plan_.tab;
    tabs->setCurrentIndex(index);
    QWidget &view = *tabs->currentWidget();
    auto *slider = view.findChild<QSlider *>();
    auto *box = view.findChild<QCheckBox *>();
    if (!slider || !box)
        return QStringLiteral("no slider or no check box in the tab ") + plan_.tab;
    slider->setValue(slider->minimum());
    view.installEventFilter(this);
    window_.show();
    if (!QTest::qWaitForWindowActive(&window_))
        return QStringLiteral("the window does not show");
    typeLine(*lineEditOf(*tool), QStringLiteral("?"));
    clicker_ = std::make_unique<Clicker>(*box);
    return {};
}

void Session::run()
{
    if (plan_.reportsPerSecond > 0)
        sender_.emplace(sendFunction(), boardId, plan_.reportsPerSecond);
    QEventLoop loop;
    connect(clicker_.get(), &Clicker::stopped, &loop, &QEventLoop::quit);
    QTimer::singleShot(plan_.seconds * 1000 / 6, this, [this] { early_ = Resources::now(); });
    QTimer::singleShot(plan_.seconds * 1000, this, &Session::finish);
    clicker_->start();
    loop.exec();
    window_.close();
}

void Session::finish()
{
    late_ = Resources::now();
    reports_ = Simulation::find()->totals().delivered;
    sender_.reset();
    clicker_->stop();
}

bool Session::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() == QEvent::Paint)
        ++pictures_;
    return QObject::eventFilter(watched, event);
}
