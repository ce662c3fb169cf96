#include "convert/WorkerMessage.h"

#include <cstdint>
#include <cstring>

namespace
{

using Size = std::uint64_t;

void appendSize(std::string& bytes, Size size)
{
    bytes.append(reinterpret_cast<char const*>(&size), sizeof size);
}

Size sizeAt(std::string const& bytes, std::size_t place)
{
    Size size = 0;
    std::memcpy(&size, bytes.data() + place, sizeof size);
    return size;
}

} // namespace

std::string WorkerMessage::bytes() const
{
    std::string body(1, static_cast<char>(kind));
    for (std::string const& field : fields) {
        appendSize(body, field.size());
        body += field;
    }
    std::string message;
    message.reserve(sizeof(Size) + body.size());
    appendSize(message, body.size());
    return message += body;
}

std::optional<WorkerMessage> WorkerMessage::takeFrom(std::string& arrived)
{
    if (arrived.size() < sizeof(Size) || arrived.size() - sizeof(Size) < sizeAt(arrived, 0))
        return std::nullopt;
    std::size_t const end = sizeof(Size) + sizeAt(arrived, 0);
    WorkerMessage message;
    std::size_t place = sizeof(Size);
    message.kind = static_cast<Kind>(arrived[place++]);
    while (place < end) {
        Size const size = sizeAt(arrived, place);
        place += sizeof(Size);
        message.fields.push_back(arrived.substr(place, size));
        place += size;
    }
    arrived.erase(0, end);
    return message;
}
