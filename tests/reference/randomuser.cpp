#include "reference/randomuser.h"

#include <QComboBox>
#include <QHeaderView>
#include <QScrollBar>
#include <QStyleFactory>
#include <QTimer>
#include <QWheelEvent>
#include <utility>

RandomUser::RandomUser(ShownWindow &shownWindow, quint32 seed, AddRow add, Settle settled)
    : shown(shownWindow)
    , random(seed)
    , addRow(std::move(add))
    , settle(std::move(settled))
{
}

Observed RandomUser::step()
{
    grabbed = QImage();
    const QString action = act();
    settle();
    constexpr qreal ratios[] = {1, 1, 1, 1.25, 1.5, 2};
    Observed observed = observe(shown, ratios[below(6)]);
    observed.action = action;
    observed.beforeEvents = grabbed;
    return observed;
}

QString RandomUser::act()
{
    using User = RandomUser;
    using Action = QString (User::*)();
    // clang-format off
    constexpr Action actions[] = {
        &User::pressKey, &User::useMouse, &User::dragHeader, &User::resize, &User::changeTab, &User::changeFont,
        &User::changePalette, &User::changeStyleSheet, &User::changeView, &User::changeItem, &User::changeItem,
        &User::edit, &User::edit, &User::addRowsAndEditSoon, &User::addRowsAndEditSoon, &User::addRowsAndGrab,
        &User::addRowsAndGrab, &User::addRowsAndGrab, &User::addRows, &User::addRows, &User::addRows,
        &User::addRows, &User::addRows, &User::addRows};
    // clang-format on
    return (this->*actions[below(24)])();
}

QString RandomUser::rowText()
{
    QString text;
    const int length = below(4) == 0 ? between(60, 400) : between(0, 20);
    for (int i = 0; i < length; ++i)
        text += QChar(between(0x20, 0x7E));
    const int end = below(12);
    if (end == 0)
        text += QChar(between(0xA0, 0xFF));
    if (end == 1)
        text += QLatin1Char('\t') + text;
    return text;
}

QString RandomUser::addRows()
{
    const int count = below(3) == 0 ? between(1, 60) : between(1, 9);
    const bool wide = below(4) == 0;
    for (int i = 0; i < count; ++i) {
        const QString first = wide ? QString(120, QLatin1Char('w')) + QString::number(i) : rowText();
        const QString second = below(5) == 0 ? rowText() : QString();
        addRow(shown.view, first, second);
    }
    return QStringLiteral("%1 %2rows").arg(count).arg(wide ? "wide " : "");
}

QString RandomUser::addRowsAndGrab()
{
    const QString action = addRows();
    grabbed = (below(2) == 0 ? static_cast<QWidget *>(shown.window) : rows())->grab().toImage();
    return action + QStringLiteral(", grabbed at once");
}

QString RandomUser::addRowsAndEditSoon()
{
    const QString action = addRows();
    const int row = below(4);
    QTimer::singleShot(0, rows(), [this, row] {
        rows()->scrollToTop();
        rows()->edit(shown.model->index(row, 0));
    });
    return action + QStringLiteral(", and an editor from a timer");
}

QModelIndex RandomUser::someRow()
{
    const int count = shown.model->rowCount();
    const int row = below(151);
    return shown.model->index(count == 0 ? 0 : row % count, 0);
}

QString RandomUser::pressKey()
{
    constexpr Qt::Key keys[] = {Qt::Key_Up,  Qt::Key_Down, Qt::Key_PageUp, Qt::Key_PageDown, Qt::Key_Home,
                                Qt::Key_End, Qt::Key_Left, Qt::Key_Right,  Qt::Key_Space,    Qt::Key_Escape};
    rows()->setFocus();
    const Qt::Key key = keys[below(10)];
    for (int times = between(1, 4); times > 0; --times)
        QTest::keyClick(rows(), key);
    return QStringLiteral("key %1").arg(key, 0, 16);
}

QString RandomUser::useMouse()
{
    // The view scrolls to the clicked row half a second later, which no step waits for.
    rows()->setAutoScroll(false);
    const QPoint place(between(5, 180), between(5, 120));
    const int what = below(4);
    QWidget *viewport = rows()->viewport();
    if (what == 0)
        QTest::mouseClick(viewport, Qt::LeftButton, {}, place);
    else if (what == 1)
        QTest::mouseDClick(viewport, Qt::LeftButton, {}, place);
    else if (what == 2)
        QTest::mouseMove(viewport, place);
    const int lines = between(-6, 6);
    if (what == 3) {
        QWheelEvent wheel(place, viewport->mapToGlobal(place), {}, {0, lines * 120}, Qt::NoButton, {},
                          Qt::NoScrollPhase, false);
        QCoreApplication::sendEvent(viewport, &wheel);
    }
    rows()->setAutoScroll(true);
    return QStringLiteral("mouse %1 at %2, %3").arg(what).arg(place.x()).arg(place.y());
}

QString RandomUser::dragHeader()
{
    const int by = between(-250, 250);
    QWidget *header = rows()->header()->viewport();
    const QPoint edge(rows()->header()->sectionViewportPosition(0) + rows()->columnWidth(0) - 1, 5);
    QTest::mousePress(header, Qt::LeftButton, {}, edge);
    QMouseEvent move(QEvent::MouseMove, edge + QPoint(by, 0), header->mapToGlobal(edge + QPoint(by, 0)),
                     Qt::NoButton, Qt::LeftButton, {});
    QCoreApplication::sendEvent(header, &move);
    QTest::mouseRelease(header, Qt::LeftButton, {}, edge + QPoint(by, 0));
    return QStringLiteral("header dragged by %1").arg(by);
}

QString RandomUser::resize()
{
    const QSize size(between(320, 800), between(280, 600));
    shown.window->resize(size);
    return QStringLiteral("window of %1 by %2").arg(size.width()).arg(size.height());
}

QString RandomUser::changeTab()
{
    shown.tabs->setCurrentIndex(0);
    const bool meanwhile = below(2) == 0;
    if (meanwhile)
        addRows();
    settle();
    shown.tabs->setCurrentIndex(1);
    return meanwhile ? QStringLiteral("other tab and back, with rows meanwhile")
                     : QStringLiteral("other tab and back");
}

QString RandomUser::changeFont()
{
    const bool family = below(2) == 0;
    const int choice = below(4);
    if (family) {
        constexpr const char *families[] = {"DejaVu Sans Mono", "DejaVu Sans", "DejaVu Serif", "Courier"};
        shown.view->OnChangedFont(QFont(QLatin1String(families[choice])));
        return QLatin1String(families[choice]);
    }
    constexpr const char *sizes[] = {"6", "8", "10", "12"};
    shown.view->OnChangedFontSize(QLatin1String(sizes[choice]));
    return QLatin1String(sizes[choice]) + QStringLiteral(" points");
}

QString RandomUser::changePalette()
{
    QWidget *target = below(2) == 0 ? static_cast<QWidget *>(rows()) : shown.window;
    constexpr QPalette::ColorRole roles[] = {QPalette::Text, QPalette::Base, QPalette::Highlight,
                                             QPalette::Window, QPalette::WindowText};
    const QPalette::ColorRole role = roles[below(5)];
    QPalette palette = target->palette();
    palette.setColor(role, QColor::fromRgb(random.generate()));
    target->setPalette(palette);
    return QStringLiteral("palette role %1").arg(int(role));
}

QString RandomUser::changeStyleSheet()
{
    constexpr const char *sheets[] = {"",
                                      "",
                                      "QTreeView::item {color: orange; padding: 3px;}",
                                      "QTreeView::item:selected {background: blue;}",
                                      "QTreeView {background: navy; alternate-background-color: maroon;}",
                                      "QLabel {border: 2px solid red;} QTreeView {border: 3px solid green;}",
                                      "QHeaderView::section {background: teal; height: 30px;}"};
    const int sheet = below(7);
    const int target = below(5);
    if (target == 4) {
        QApplication::setStyle(QStyleFactory::create(sheet < 3 ? "windows" : "fusion"));
        return QStringLiteral("style %1").arg(sheet < 3 ? "windows" : "fusion");
    }
    if (target == 3)
        qApp->setStyleSheet(QLatin1String(sheets[sheet]));
    else if (target == 0)
        shown.window->setStyleSheet(QLatin1String(sheets[sheet]));
    else if (target == 1)
        rows()->setStyleSheet(QLatin1String(sheets[sheet]));
    else
        shown.view->setStyleSheet(QStringLiteral("QTreeView {color: white; background-color: black;} ") +
                                  QLatin1String(sheets[sheet]));
    return QStringLiteral("style sheet %1 on %2").arg(sheet).arg(target);
}

QString RandomUser::changeView()
{
    const int what = below(7);
    const bool on = below(2) == 0;
    const std::function<void()> changes[] = {
        [&] { rows()->setAlternatingRowColors(on); },
        [&] { rows()->setVerticalScrollMode(on ? QTreeView::ScrollPerPixel : QTreeView::ScrollPerItem); },
        [&] { rows()->setVerticalScrollBarPolicy(on ? Qt::ScrollBarAlwaysOn : Qt::ScrollBarAsNeeded); },
        [&] { shown.window->setLayoutDirection(on ? Qt::RightToLeft : Qt::LeftToRight); },
        [&] { shown.view->setEnabled(on); },
        [&] { rows()->setTextElideMode(on ? Qt::ElideMiddle : Qt::ElideRight); },
        [&] { rows()->verticalScrollBar()->setValue(below(150)); },
    };
    changes[what]();
    return QStringLiteral("view %1 %2").arg(what).arg(on);
}

QString RandomUser::changeItem()
{
    const QString action = below(2) == 0 ? addRows() + QStringLiteral(", then ") : QString();
    const QModelIndex index = below(3) == 0 ? shown.model->index(0, 0) : someRow();
    const int what = below(7);
    const QColor colour = QColor::fromRgb(random.generate());
    const QFont font(QStringLiteral("DejaVu Serif"), between(6, 20));
    const QPair<QVariant, int> changes[] = {{QStringLiteral("changed by the host"), Qt::EditRole},
                                            {QStringLiteral("taller\nby a line"), Qt::EditRole},
                                            {font, Qt::FontRole},
                                            {colour, Qt::ForegroundRole},
                                            {colour, Qt::BackgroundRole},
                                            {Qt::Checked, Qt::CheckStateRole},
                                            {int(Qt::AlignRight | Qt::AlignBottom), Qt::TextAlignmentRole}};
    shown.model->setData(index, changes[what].first, changes[what].second);
    return action + QStringLiteral("item %1 of row %2").arg(what).arg(index.row());
}

QString RandomUser::edit()
{
    rows()->setFocus();
    rows()->setCurrentIndex(someRow());
    QTest::keyClick(rows(), Qt::Key_F2);
    const bool typed = below(2) == 0;
    const bool accepted = below(2) == 0;
    const bool rowsCome = below(2) == 0;
    if (rowsCome)
        addRows();
    QWidget *editor = rows()->indexWidget(rows()->currentIndex());
    if (editor && typed) {
        QTest::keyClicks(editor, QStringLiteral("typed"));
        QTest::keyClick(editor, accepted ? Qt::Key_Return : Qt::Key_Escape);
    }
    return QStringLiteral("editor%1").arg(rowsCome ? ", with rows meanwhile" : "");
}
