#pragma once

#include <QByteArray>
#include <string>
#include <vector>

namespace plots {

/// A page of HTML that needs nothing beside itself. Any text is escaped, so that it is
/// no markup. Control characters stay as they are.
class Html
{
public:
    explicit Html(const std::string &title);

    void heading(int level, const std::string &text);
    void paragraph(const std::string &text);
    void table(const std::vector<std::string> &head, const std::vector<std::vector<std::string>> &rows);
    /// An SVG, as QSvgGenerator writes it.
    void picture(const QByteArray &svg);

    /// To be called once.
    QByteArray finish();

private:
    void row(const char *cell, const std::vector<std::string> &texts);

    QByteArray bytes;
};

} // namespace plots
