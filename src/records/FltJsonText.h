#pragma once

#include "records/FltFieldReceiver.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

/// Writes a record's fields as JSON text, value by value, without a tree of them. The one place that knows
/// how a number, a text and bytes look.
///
/// A float is written in the fewest digits that are this float; a number that JSON doesn't have is a text.
/// What a terminal would obey is escaped in texts. Bytes are two
/// hexadecimal digits each. Flags whose bits are named are an object: the word, and each bit.
class FltJsonText final : public FltFieldReceiver
{
public:
    /// @param written to which everything is appended. It has to outlive this object.
    explicit FltJsonText(std::string& written) : written(written) {}

    void key(char const* name) override;
    void integer(std::int64_t value) override;
    void real(float value) override;
    void real(double value) override;
    void text(std::string_view characters) override;
    void bytes(std::string_view bytes) override;
    void beginArray(Length length) override;
    void endArray() override { end(']'); }
    void beginObject() override { begin('{'); }
    void endObject() override { end('}'); }
    void resumeArray() override;
    void beginFlags() override;
    void endFlags() override { last.end = written.size(); }
    void flag(char const* name, bool isSet) override;

private:
    /// Where the last flags stand in the text, and whether they have named bits yet.
    struct Flags {
        std::size_t begin = 0;
        std::size_t end = 0;
        bool areNamed = false;
    };

    void separate()
    {
        if (!isFirst)
            written += ',';
        isFirst = false;
    }
    void begin(char bracket)
    {
        separate();
        written += bracket;
        isFirst = true;
    }
    void end(char bracket)
    {
        written += bracket;
        isFirst = false;
    }

    std::string& written;
    bool isFirst = true;
    bool areFlags = false; ///< Whether the next member's value is flags.
    Flags last;
};
