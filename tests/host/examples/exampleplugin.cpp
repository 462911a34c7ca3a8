// A tool that writes what happens to it, a line each, into the file that EXAMPLE_RECORD names. It throws in
// the operation that EXAMPLE_THROWS names, and returns null from the one that EXAMPLE_RETURNS_NULL names, as
// in "Second.widget".

#include <dlfcn.h>
#include <QAction>
#include <QCloseEvent>
#include <QCoreApplication>
#include <QFile>
#include <QLineEdit>
#include <QTabWidget>
#include <QTreeWidget>
#include <QVBoxLayout>
#include <stdexcept>
#include <string>

#include "tendroplugininterface.h"

namespace {

void record(const QString &event)
{
    QFile file(qEnvironmentVariable("EXAMPLE_RECORD"));
    if (file.open(QIODevice::Append))
        file.write(event.toUtf8() + '\n');
}

bool isNamed(const char *variable, const char *operation)
{
    return qgetenv(variable) == QByteArray(EXAMPLE_ID ".") + operation;
}

void mayThrow(const char *operation)
{
    if (isNamed("EXAMPLE_THROWS", operation))
        throw std::runtime_error("no " + std::string(operation));
}

/// Whether a driver library is loaded that is found by its name alone.
void recordDriver()
{
    void *driver = dlopen("liborvexboardex.so.1", RTLD_NOW | RTLD_NOLOAD);
    record(driver ? "driver found" : "driver missing");
    if (driver)
        dlclose(driver);
}

class ExampleWidget : public QWidget
{
    Q_OBJECT

public:
    ExampleWidget();
    ~ExampleWidget() override { record("widget destroyed"); }

protected:
    void closeEvent(QCloseEvent *event) override;

private:
    QLineEdit *line_;
};

ExampleWidget::ExampleWidget()
    : line_(new QLineEdit)
{
    auto *rows = new QTreeWidget;
    rows->setColumnCount(2);
    rows->addTopLevelItems({new QTreeWidgetItem({"one", "1"}), new QTreeWidgetItem({"two\nlines", "2"})});
    auto *tabs = new QTabWidget;
    tabs->addTab(rows, "First Tab");
    tabs->addTab(new QWidget, "&Second");
    connect(tabs, &QTabWidget::currentChanged, this, [](int index) { record(QString("tab %1").arg(index)); });
    connect(line_, &QLineEdit::returnPressed, this, [this] {
        record("typed " + line_->text());
        recordDriver();
        line_->clear();
    });
    auto *layout = new QVBoxLayout(this);
    layout->addWidget(tabs);
    layout->addWidget(line_);
    setMinimumWidth(950);
}

void ExampleWidget::closeEvent(QCloseEvent *event)
{
    record("widget closed");
    recordDriver();
    event->accept();
}

} // namespace

class ExamplePlugin : public QObject, public TendroPluginInterface
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID "com.corvane.tendro.example")
    Q_INTERFACES(TendroPluginInterface)

public:
    ExamplePlugin() { mayThrow("constructor"); }
    ~ExamplePlugin() override { record("plugin destroyed"); }

    QString id() const override;
    QString description() const override { return "An <example>."; }
    QString copyright() const override { return "Copyright (c) 2010 Example"; }
    QString version() const override;
    QString category() const override { return EXAMPLE_CATEGORY; }
    void closeWidget() override;
    QAction *action() override;
    QWidget *widget() override;

private:
    QAction *action_ = nullptr;
    QWidget *widget_ = nullptr;
};

QString ExamplePlugin::id() const
{
    mayThrow("id");
    return EXAMPLE_ID;
}

/// "Version 1.0", or the translation of what the environment names as "context|text".
QString ExamplePlugin::version() const
{
    const QByteArray wanted = qgetenv("EXAMPLE_TRANSLATES");
    const int bar = wanted.indexOf('|');
    return bar < 0
               ? QCoreApplication::translate("Example", "Version 1.0")
               : QCoreApplication::translate(wanted.left(bar).constData(), wanted.mid(bar + 1).constData());
}

void ExamplePlugin::closeWidget()
{
    record("closeWidget");
    mayThrow("closeWidget");
    if (widget_)
        widget_->close();
}

QAction *ExamplePlugin::action()
{
    mayThrow("action");
    if (isNamed("EXAMPLE_RETURNS_NULL", "action"))
        return nullptr;
    if (!action_) {
        action_ = new QAction(EXAMPLE_ID " caption", this);
        action_->setToolTip(description());
    }
    return action_;
}

QWidget *ExamplePlugin::widget()
{
    record("widget()");
    mayThrow("widget");
    if (EXAMPLE_HAS_WINDOW && !widget_)
        widget_ = new ExampleWidget;
    return widget_;
}

#include "exampleplugin.moc"
