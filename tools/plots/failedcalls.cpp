#include "failedcalls.h"

#include "listing.h"
#include "recordtext.h"
#include "signatures.h"

namespace plots {

namespace {

constexpr std::size_t maxOpenCalls = 4096;

bool failsWithZero(const std::string &name)
{
    return name == "orvexAttach" || name == "orvexEnumDeviceInfo";
}

std::uint64_t keyOf(const capture::Record &record, std::uint32_t number)
{
    return std::uint64_t{record.header.session} << 32 | number;
}

/// \param call its text with the arguments; empty where it is not known
FailedCall failureOf(const capture::Record &record, double seconds, const std::string &call)
{
    FailedCall failed{record.header.session, seconds, decoding::callTextOf(record)};
    // "name() = -1" is what a return has.
    if (!call.empty())
        failed.text.replace(0, failed.text.find(" = "), call);
    return failed;
}

} // namespace

bool tellsFailure(const capture::Record &record)
{
    const capture::Header &header = record.header;
    if (header.kindOf() != capture::Kind::Return || !header.has(capture::ResultIsValid))
        return false;
    const signatures::Signature *signature = signatures::signatureOf(header.call);
    return header.result < 0 || (header.result == 0 && signature && failsWithZero(signature->name));
}

void FailedCalls::follow(const capture::Record &record, double seconds)
{
    const capture::Header &header = record.header;
    if (header.kindOf() == capture::Kind::Call && open.size() < maxOpenCalls)
        open[keyOf(record, static_cast<std::uint32_t>(header.sequence))] = decoding::callTextOf(record);
    if (header.kindOf() != capture::Kind::Return)
        return;
    const auto call = open.find(keyOf(record, header.link));
    if (tellsFailure(record)) {
        ++counts[header.session];
        if (all.size() < maxListed)
            all.push_back(failureOf(record, seconds, call == open.end() ? std::string() : call->second));
    }
    if (call != open.end())
        open.erase(call);
}

std::uint64_t FailedCalls::countOf(std::uint32_t session) const
{
    const auto found = counts.find(session);
    return found == counts.end() ? 0 : found->second;
}

} // namespace plots
