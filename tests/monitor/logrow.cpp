// Logs a row on Sunday, 15 November 2026, in the locale of its environment.

#include <QApplication>
#include <QDateTime>

#include "monitor.h"
#include "support/fakewindow.h"

/// Takes the place of Qt's own for the objects that are linked into the program.
QDateTime QDateTime::currentDateTime()
{
    return {QDate(2026, 11, 15), QTime(12, 0)};
}

int main(int argc, char **argv)
{
    const QApplication application(argc, argv);
    FakeWindow window;
    monitor view(&window);
    view.LogToFile(true);
    view.AddData("A", QString());
    return 0;
}
