// Prints the faults of the simulator: "table" for simulator/README.md, "schema" for its schema.json.

#include <cstdio>
#include <cstring>

#include "faults.h"

namespace {

constexpr const char *concerns[] = {"one board", "every board", "the library"}; // by Fault::Scope

void printRow(const Fault &fault)
{
    std::printf("| `%s` | %s | %s | %s |", fault.name.data(), concerns[static_cast<int>(fault.scope)],
                fault.text, fault.isOn ? "until triggered again" : "once");
    const Amount &amount = fault.amount;
    if (amount.key)
        std::printf(" `%s`: %g, from %g to %g", amount.key, amount.usual, amount.min, amount.max);
    std::printf(" |\n");
}

void printTable()
{
    std::printf("| Fault | Concerns | What happens | Lasts | A scenario may say |\n| --- | --- | --- | --- | "
                "--- |\n");
    for (const Fault &fault : faults())
        printRow(fault);
    std::printf("\n");
}

void printAmount(const Amount &amount)
{
    std::printf(",\n            \"%s\": {\n", amount.key);
    std::printf("              \"description\": \"%g unless said otherwise.\",\n", amount.usual);
    std::printf("              \"type\": \"%s\",\n", amount.whole ? "integer" : "number");
    std::printf("              \"minimum\": %g,\n              \"maximum\": %.0f\n            }", amount.min,
                amount.max);
}

void printSchemaOf(const Fault &fault)
{
    std::printf("        {\n          \"description\": \"%s\",\n          \"type\": \"object\",\n",
                fault.text);
    std::printf(
        "          \"additionalProperties\": false,\n          \"required\": [\n            \"fault\"\n");
    std::printf("          ],\n          \"properties\": {\n            \"at\": {\n");
    std::printf("              \"$ref\": \"#/$defs/seconds\"\n            },\n            \"fault\": {\n");
    std::printf("              \"const\": \"%s\"\n            }", fault.name.data());
    if (fault.scope == Fault::Scope::FirstBoard)
        std::printf(",\n            \"board\": {\n              \"$ref\": \"#/$defs/id\"\n            }");
    if (fault.amount.key)
        printAmount(fault.amount);
    std::printf("\n          }\n        }%s\n", &fault == &faults().back() ? "" : ",");
}

void printSchema()
{
    std::printf("    \"fault\": {\n      \"oneOf\": [\n");
    for (const Fault &fault : faults())
        printSchemaOf(fault);
    std::printf("      ]\n    }\n");
}

} // namespace

int main(int argc, char **argv)
{
    if (argc == 2 && std::strcmp(argv[1], "table") == 0) {
        printTable();
    } else if (argc == 2 && std::strcmp(argv[1], "schema") == 0) {
        printSchema();
    } else {
        std::fputs("writefaults: \"table\" or \"schema\" is needed\n", stderr);
        return 2;
    }
}
