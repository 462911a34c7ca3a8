#include "scenariomenu.h"

#include <algorithm>
#include <QActionGroup>
#include <QDir>
#include <QFileDialog>
#include <QFileInfo>
#include <QMessageBox>
#include <QRegularExpression>

#include "captions.h"

namespace {

/// That of a file in memory is told by the link in /proc that leads to it.
QString fileNameOf(const QString &scenario)
{
    static const QRegularExpression inMemory(QStringLiteral("^/memfd:(.*) \\(deleted\\)$"));
    const QFileInfo file(scenario);
    const auto match = inMemory.match(file.symLinkTarget());
    return match.hasMatch() ? match.captured(1) : file.fileName();
}

} // namespace

ScenarioMenu::ScenarioMenu(const Simulation &simulation, QWidget *parent)
    : QMenu(parent)
    , simulation_(simulation)
    , scenarios_(new QActionGroup(this))
{
    for (const Simulation::Scenario &scenario : simulation_.scenarios())
        addScenario(scenario.name, asCaption(scenario.name + QStringLiteral(": ") + scenario.title));
    ownFile_ = addScenario({}, {});
    ownFile_->setVisible(false);
    addSeparator();
    addAction(tr("&Open..."), this, &ScenarioMenu::openFile, QKeySequence::Open);
    addAction(
        tr("&Reload"), this, [this] { choose(simulation_.currentScenario()); }, QKeySequence::Refresh);
    markCurrent();
}

QAction *ScenarioMenu::addScenario(const QString &scenario, const QString &caption)
{
    QAction *action = scenarios_->addAction(caption);
    action->setCheckable(true);
    action->setData(scenario);
    connect(action, &QAction::triggered, this, [this, action] { choose(action->data().toString()); });
    addAction(action);
    return action;
}

void ScenarioMenu::openFile()
{
    const QString last = ownFile_->data().toString();
    const QString folder = last.isEmpty() ? QDir::homePath() : QFileInfo(last).absolutePath();
    auto *dialog =
        new QFileDialog(parentWidget(), tr("Open Scenario"), folder,
                        tr("Scenarios (*.json *.pcapng)") + QStringLiteral(";;") + tr("All files (*)"));
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    dialog->setFileMode(QFileDialog::ExistingFile);
    connect(dialog, &QFileDialog::fileSelected, this, &ScenarioMenu::choose);
    dialog->open();
}

void ScenarioMenu::choose(const QString &scenario)
{
    const QString error = simulation_.choose(scenario);
    markCurrent();
    if (error.isEmpty())
        emit told(tr("Scenario: %1").arg(scenario));
    else
        showError(error);
}

QAction *ScenarioMenu::actionOf(const QString &scenario)
{
    const QList<QAction *> actions = scenarios_->actions();
    const auto found = std::find_if(actions.begin(), actions.end(),
                                    [&](const QAction *action) { return action->data() == scenario; });
    if (found != actions.end())
        return *found;
    ownFile_->setText(asCaption(fileNameOf(scenario)));
    ownFile_->setStatusTip(scenario);
    ownFile_->setData(scenario);
    ownFile_->setVisible(true);
    return ownFile_;
}

void ScenarioMenu::markCurrent()
{
    const QString current = simulation_.currentScenario();
    setTitle(tr("&Scenario: %1").arg(asCaption(fileNameOf(current))));
    nameByTitle(*this);
    actionOf(current)->setChecked(true);
}

void ScenarioMenu::showError(const QString &error)
{
    auto *box =
        new QMessageBox(QMessageBox::Warning, tr("Scenario"), error, QMessageBox::Close, parentWidget());
    box->setAttribute(Qt::WA_DeleteOnClose);
    box->setTextFormat(Qt::PlainText);
    box->open();
}
