#include <QApplication>
#include <QLabel>

/// A window with one label, and nothing else.
int main(int argc, char **argv)
{
    const QApplication application(argc, argv);
    QLabel label(QStringLiteral("Devices found"));
    label.resize(800, 600);
    label.show();
    return QApplication::exec();
}
