#include "html.h"

#include <QString>

namespace plots {

namespace {

/// No script, no request: nothing that slipped through would be run or loaded.
constexpr char head[] = R"(<!DOCTYPE html>
<html lang="en">
<head>
<meta charset="utf-8">
<meta http-equiv="Content-Security-Policy" content="default-src 'none'; style-src 'unsafe-inline'; img-src data:">
<meta name="viewport" content="width=device-width, initial-scale=1">
<style>
body { font: 14px/1.4 "DejaVu Sans", Verdana, sans-serif; color: #000; background: #fff; max-width: 960px; margin: 2em auto; padding: 0 1em; }
h2 { border-top: 2px solid #000; padding-top: .5em; margin-top: 2em; }
h3 { border-top: 1px solid #999; padding-top: .5em; }
table { border-collapse: collapse; margin: .5em 0; font-size: 12px; }
th, td { border: 1px solid #999; padding: .15em .6em; text-align: left; vertical-align: top; overflow-wrap: anywhere; unicode-bidi: isolate; font-variant-numeric: tabular-nums; }
th { background: #eee; overflow-wrap: normal; }
svg { display: block; width: 100%; height: auto; margin: .5em 0; }
@media print { body { max-width: none; margin: 0; } svg, tr { break-inside: avoid; } h2, h3, h4 { break-after: avoid; } }
</style>
)";

QByteArray asMarkup(const std::string &text)
{
    return QString::fromStdString(text).toHtmlEscaped().toUtf8();
}

} // namespace

Html::Html(const std::string &title)
    : bytes(head)
{
    bytes += "<title>" + asMarkup(title) + "</title>\n</head>\n<body>\n";
}

void Html::heading(int level, const std::string &text)
{
    const QByteArray tag = 'h' + QByteArray::number(level);
    bytes += '<' + tag + '>' + asMarkup(text) + "</" + tag + ">\n";
}

void Html::paragraph(const std::string &text)
{
    bytes += "<p>" + asMarkup(text) + "</p>\n";
}

void Html::row(const char *cell, const std::vector<std::string> &texts)
{
    bytes += "<tr>";
    for (const std::string &text : texts)
        bytes += QByteArray("<") + cell + '>' + asMarkup(text) + "</" + cell + '>';
    bytes += "</tr>\n";
}

void Html::table(const std::vector<std::string> &titles, const std::vector<std::vector<std::string>> &rows)
{
    bytes += "<table>\n";
    row("th", titles);
    for (const std::vector<std::string> &texts : rows)
        row("td", texts);
    bytes += "</table>\n";
}

void Html::picture(const QByteArray &svg)
{
    bytes += svg.mid(svg.indexOf("<svg")); // without the declaration of a file of its own
}

QByteArray Html::finish()
{
    return bytes + "</body>\n</html>\n";
}

} // namespace plots
