#include "reference/reports.h"

namespace {

struct Kind
{
    int length;
    int type;
    int subType; ///< -1 is a value like the others
    int size;    ///< bytes in the packet
};

constexpr Kind kinds[] = {
    {40, 47, 1, 40},   {40, 47, 2, 40},   {14, 47, 3, 14},   {10, 47, 4, 10},   {16, 47, 5, 16},
    {25, 47, 6, 25},   {40, 47, 0, 40},   {40, 47, 7, 40},   {12, 47, 1, 12},   {40, 104, -1, 40},
    {39, 104, -1, 39}, {9, 162, 0, 9},    {26, 163, -1, 26}, {31, 164, -1, 31}, {52, 119, 12, 52},
    {58, 119, 12, 58}, {20, 33, -1, 20},  {9, 34, -1, 9},    {3, 35, -1, 3},    {10, 104, -1, 10},
    {40, 47, 1, 20},   {31, 164, -1, 12}, {2, 33, -1, 2},    {60, 200, -1, 60},
};

/// A small generator, so that the bytes are the same everywhere.
class Bytes
{
public:
    explicit Bytes(int seed)
        : state(static_cast<quint32>(seed) * 2654435761U + 12345U)
    {
    }

    char next()
    {
        state = state * 1664525U + 1013904223U;
        return static_cast<char>(state >> 24);
    }

private:
    quint32 state;
};

} // namespace

QVector<QByteArray> reportsOfEveryKind(int round)
{
    Bytes values(round);
    QVector<QByteArray> reports;
    for (const Kind &kind : kinds) {
        QByteArray report(kind.size, 0);
        for (char &byte : report)
            byte = values.next();
        report[0] = static_cast<char>(kind.length);
        report[1] = static_cast<char>(kind.type);
        if (kind.subType >= 0 && kind.size > 2)
            report[2] = static_cast<char>(kind.subType);
        if (kind.type == 162) {
            report[3] = static_cast<char>(round % 3);
            report[4] = 0;
        }
        reports.append(report);
    }
    return reports;
}
