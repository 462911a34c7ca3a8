#pragma once

#include <QProcess>

/// Starts an X server with a screen of 1280 by 800 pixels, which exists in memory only.
/// \return its display, such as ":1", or nothing
inline QString startDisplayServer(QProcess &server)
{
    server.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    // By default a server resets when its last client leaves, and closes connections that are being opened.
    server.start("Xvfb", {"-displayfd", "1", "-noreset", "-screen", "0", "1280x800x24", "-nolisten", "tcp"});
    QByteArray number;
    while (!number.endsWith('\n') && server.waitForReadyRead(20000))
        number += server.readAllStandardOutput();
    return number.isEmpty() ? QString() : ':' + QString::fromLatin1(number.trimmed());
}
