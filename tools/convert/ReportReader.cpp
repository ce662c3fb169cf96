#include "convert/ReportReader.h"

#include "support/ToolError.h"

#include <array>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <memory>
#include <utility>

ReportReader ReportReader::read(std::string const& file, Take take)
{
    auto const fail = [&file](int reason) {
        throw ToolError(file + ": cannot read this report: " + std::strerror(reason) +
                        ". Check its name and permissions.");
    };
    std::unique_ptr<FILE, int (*)(FILE*)> const stream(std::fopen(file.c_str(), "rbe"), std::fclose);
    if (stream == nullptr)
        fail(errno);
    ReportReader reader(std::move(take));
    std::array<char, 65536> buffer{};
    for (std::size_t count = 0; (count = std::fread(buffer.data(), 1, buffer.size(), stream.get())) > 0;)
        reader.add({buffer.data(), count});
    if (std::ferror(stream.get()) != 0)
        fail(errno);
    reader.end();
    if (!reader.run())
        throw ToolError(file + ": this is no report. Give the files that --report has written.");
    return reader;
}

void ReportReader::add(std::string_view bytes)
{
    for (std::size_t end = 0; (end = bytes.find('\n')) != std::string_view::npos;) {
        if (begun.empty()) {
            readLine(bytes.substr(0, end), true);
        } else {
            begun += bytes.substr(0, end);
            readLine(begun, true);
            begun.clear();
        }
        bytes.remove_prefix(end + 1);
    }
    begun += bytes;
}

void ReportReader::end()
{
    readLine(begun, false);
    begun.clear();
}

std::optional<std::size_t> ReportReader::numberOf(std::string const& input) const
{
    auto const number = numbers.find(input);
    return number != numbers.end() ? std::optional(number->second) : std::nullopt;
}

void ReportReader::readLine(std::string_view line, bool hasEnd)
{
    Place const place = {offset, line.size() + 1};
    offset += place.size;
    if (line.empty())
        return;
    if (std::optional<ReportLine> read = ReportLine::from(line); read && hasEnd)
        take(numbers.try_emplace(read->input, numbers.size()).first->second, *read, place);
    else if (std::optional<ReportRun> run = ReportRun::from(line))
        lastRun = std::move(run);
    else
        ++tornLines;
}
