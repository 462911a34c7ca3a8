// A tool that writes what happens to it, a line each, into the file that EXAMPLE_RECORD names. It throws in
// the operation that EXAMPLE_THROWS names, and returns null from the one that EXAMPLE_RETURNS_NULL names, as
// in "Second.widget".

#include "tendroplugininterface.h"

#include <dlfcn.h>
#include <QAction>
#include <QCloseEvent>
#include <QComboBox>
#include <QCoreApplication>
#include <QFile>
#include <QLineEdit>
#include <QSpinBox>
#include <QStandardItemModel>
#include <QTabWidget>
#include <QTreeView>
#include <QVBoxLayout>
#include <stdexcept>
#include <string>

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
    record(driver ? QStringLiteral("driver found") : QStringLiteral("driver missing"));
    if (driver)
        dlclose(driver);
}

class ExampleWidget : public QWidget
{
    Q_OBJECT

public:
    ExampleWidget();
    ~ExampleWidget() override { record(QStringLiteral("widget destroyed")); }

protected:
    void closeEvent(QCloseEvent *event) override;

private:
    QWidget *createFirstTab();

    QLineEdit *line_;
};

ExampleWidget::ExampleWidget()
    : line_(new QLineEdit)
{
    auto *tabs = new QTabWidget;
    tabs->addTab(createFirstTab(), QStringLiteral("First Tab"));
    tabs->addTab(new QWidget, QStringLiteral("&Second"));
    connect(tabs, &QTabWidget::currentChanged, this,
            [](int index) { record(QStringLiteral("tab %1").arg(index)); });
    connect(line_, &QLineEdit::returnPressed, this, [this] {
        record(QStringLiteral("typed ") + line_->text());
        recordDriver();
        line_->clear();
    });
    auto *layout = new QVBoxLayout(this);
    layout->addWidget(tabs);
    layout->addWidget(line_);
    setMinimumWidth(950);
}

QWidget *ExampleWidget::createFirstTab()
{
    auto *page = new QWidget;
    auto *layout = new QVBoxLayout(page);
    layout->addWidget(new QSpinBox);
    auto *box = new QComboBox;
    box->setEditable(true);
    box->addItem(QStringLiteral("choice"));
    layout->addWidget(box);
    auto *view = new QTreeView;
    auto *model = new QStandardItemModel(0, 2, view);
    model->appendRow({new QStandardItem(QStringLiteral("one")), new QStandardItem(QStringLiteral("1"))});
    model->appendRow(
        {new QStandardItem(QStringLiteral("two\nlines")), new QStandardItem(QStringLiteral("2"))});
    view->setModel(model);
    layout->addWidget(view);
    return page;
}

void ExampleWidget::closeEvent(QCloseEvent *event)
{
    record(QStringLiteral("widget closed"));
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
    ~ExamplePlugin() override { record(QStringLiteral("plugin destroyed")); }

    QString id() const override;
    QString description() const override { return QStringLiteral("An <example>."); }
    QString copyright() const override { return QStringLiteral("Copyright (c) 2010 Example"); }
    QString version() const override;
    QString category() const override { return QStringLiteral(EXAMPLE_CATEGORY); }
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
    return QStringLiteral(EXAMPLE_ID);
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
    record(QStringLiteral("closeWidget"));
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
        action_ = new QAction(QStringLiteral(EXAMPLE_ID " caption"), this);
        action_->setToolTip(description());
    }
    return action_;
}

QWidget *ExamplePlugin::widget()
{
    record(QStringLiteral("widget()"));
    mayThrow("widget");
    if (EXAMPLE_HAS_WINDOW && !widget_)
        widget_ = new ExampleWidget;
    return widget_;
}

#include "exampleplugin.moc"
