#include "signatures.h"

#include <map>
#include <string_view>

#include "entrypoints.h"
#include "payloads.h"

namespace signatures {

namespace {

template <typename Type>
constexpr Role roleOf(std::string_view /*name*/, Type)
{
    return std::is_signed_v<Type> ? Role::Signed : Role::Unsigned;
}

constexpr Role roleOf(std::string_view, const char *)
{
    return Role::Text;
}

constexpr Role roleOf(std::string_view, const unsigned char *)
{
    return Role::Buffer;
}

constexpr Role roleOf(std::string_view, const void *)
{
    return Role::Buffer;
}

constexpr Role roleOf(std::string_view name, void *)
{
    if (name == "context")
        return Role::Context;
    return name == "buffer" ? Role::OutBuffer : Role::Unread;
}

constexpr Role roleOf(std::string_view, OrvexDataCallback)
{
    return Role::Listener;
}

constexpr Role roleOf(std::string_view, OrvexPnpCallback)
{
    return Role::Listener;
}

constexpr Role roleOf(std::string_view, int *)
{
    return Role::OutSigned;
}

constexpr Role roleOf(std::string_view, unsigned int *)
{
    return Role::OutNumber;
}

constexpr Role roleOf(std::string_view, unsigned char *)
{
    return Role::OutNumber;
}

constexpr Role roleOf(std::string_view, _ORVEX_DEVICE_INFO *)
{
    return Role::OutRecord;
}

/// Takes the next name off "(device, callback, context)".
std::string nextName(std::string_view &names)
{
    names.remove_prefix(names.find_first_not_of("(, "));
    const std::size_t length = names.find_first_of(",)");
    std::string name(names.substr(0, length));
    names.remove_prefix(length);
    return name;
}

template <typename Result, typename... Parameters>
Signature signatureFrom(const char *name, std::string_view names, Result (*)(Parameters...))
{
    Signature signature{name, !std::is_void_v<Result>, names.substr(0, 7) == "(device", {}};
    [[maybe_unused]] const auto add = [&](auto value) {
        const std::string argument = nextName(names);
        signature.arguments.push_back({argument, roleOf(argument, value)});
    };
    (add(Parameters{}), ...);
    return signature;
}

std::vector<Signature> allSignatures()
{
    std::map<std::string, Signature> byName;
#define ADD(name, returns, fallback, parameters, arguments)                                                  \
    byName.emplace(#name, signatureFrom(#name, #arguments, static_cast<returns(*) parameters>(nullptr)));
#define NOTHING(name, returns, fallback, parameters, arguments)
    ORVEX_POINTERS(ADD, NOTHING)
#undef ADD
#undef NOTHING
    std::vector<Signature> inOrder;
#define APPEND(name) inOrder.push_back(byName.at(#name));
    ORVEX_LOOKUPS(APPEND)
#undef APPEND
    return inOrder;
}

Value valueOf(const Argument &argument, capture::PayloadReader &reader)
{
    Value value;
    value.argument = &argument;
    switch (argument.role) {
    case Role::Signed:
    case Role::OutSigned:
        value.number = reader.number<std::int32_t>();
        break;
    case Role::Unsigned:
    case Role::OutNumber:
    case Role::Listener:
        value.number = reader.number<std::uint32_t>();
        break;
    case Role::OutRecord:
        value.bytes = reader.remaining();
        break;
    default:
        const std::optional<capture::ByteView> bytes = reader.text();
        value.isNull = !bytes;
        value.bytes = bytes.value_or(capture::ByteView());
    }
    return value;
}

bool isThere(Role role, capture::ByteView rest)
{
    return rest.size >= (role == Role::OutRecord ? 1 : 4);
}

std::vector<Value> valuesOf(const Signature &signature, capture::ByteView payload, bool filledIn)
{
    std::vector<Value> values;
    capture::PayloadReader reader(payload);
    for (const Argument &argument : signature.arguments) {
        if (isFilledIn(argument.role) != filledIn || isLeftOut(argument.role))
            continue;
        if (!isThere(argument.role, reader.remaining()))
            break;
        values.push_back(valueOf(argument, reader));
    }
    return values;
}

} // namespace

const Signature *signatureOf(unsigned call)
{
    static const std::vector<Signature> all = allSignatures();
    return call >= 1 && call <= all.size() ? &all[call - 1] : nullptr;
}

std::vector<Value> argumentsOf(const Signature &signature, capture::ByteView payload)
{
    return valuesOf(signature, payload, false);
}

std::vector<Value> filledInBy(const Signature &signature, capture::ByteView payload)
{
    return valuesOf(signature, payload, true);
}

} // namespace signatures
