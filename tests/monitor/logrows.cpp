// Logs its first argument, and its second once the date has changed. Run with a clock that is set to a day.

#include <QApplication>
#include <QDate>
#include <QThread>

#include "mainwindow/qorvexgraph.h"
#include "monitor/monitor.h"

int main(int argc, char **argv)
{
    QApplication application(argc, argv);
    const QStringList arguments = QApplication::arguments();
    qorvexgraph window;
    window.monitorView->LogToFile(true);
    const QDate firstDay = QDate::currentDate();
    window.monitorView->AddData(arguments.value(1), QString());
    if (arguments.size() < 3)
        return 0;
    while (QDate::currentDate() == firstDay)
        QThread::msleep(5);
    window.monitorView->AddData(arguments.at(2), QString());
    return 0;
}
