#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "bytes.h"

/// The entry points of the driver library as they stand in a capture.
namespace signatures {

enum class Role
{
    Signed,    ///< four bytes
    Unsigned,  ///< four bytes
    Text,      ///< a length and bytes
    Buffer,    ///< a length and bytes
    Listener,  ///< number of a callback's listener, in four bytes
    Context,   ///< left out
    Unread,    ///< left out, since its length is not known
    OutNumber, ///< in the return, four bytes
    OutSigned, ///< the same, with a sign
    OutBuffer, ///< in the return, a length and bytes
    OutRecord, ///< in the return, the bytes that are left
};

/// In the return, and not in the call.
constexpr bool isFilledIn(Role role)
{
    return role >= Role::OutNumber;
}

/// In neither.
constexpr bool isLeftOut(Role role)
{
    return role == Role::Context || role == Role::Unread;
}

struct Argument
{
    std::string name;
    Role role;
};

struct Signature
{
    std::string name;
    bool hasResult;
    bool hasBoard; ///< the first argument is a board's id
    std::vector<Argument> arguments;
};

/// \param call 1 to 47, the place in the order of the look-ups
/// \return null for any other number
const Signature *signatureOf(unsigned call);

inline constexpr unsigned callCount = 47;

/// What a payload has of one argument.
struct Value
{
    const Argument *argument = nullptr;
    bool isNull = false;
    std::int64_t number = 0;
    capture::ByteView bytes;
};

/// The arguments in a call's payload, up to the first that is not there. A text or a buffer may be cut.
std::vector<Value> argumentsOf(const Signature &signature, capture::ByteView payload);
/// What was filled in, in a return's payload; the same holds.
std::vector<Value> filledInBy(const Signature &signature, capture::ByteView payload);

} // namespace signatures
