#pragma once

#include <charconv>
#include <cstdint>
#include <string_view>

/// Takes a record's fields by name with their values, in the order of the file: what writes JSON, makes
/// objects of another language or fills columns. See FltRecordReader::give().
///
/// Members of an object come as a key and a value each, elements of an array as values. A value is a number,
/// a text, bytes, an object or an array.
class FltFieldReceiver
{
public:
    /// An array comes element by element. Receivers that the library knows may take it in one piece.
    static constexpr bool takesLists = false;

    /// How long an array is.
    enum class Length {
        fixed,   ///< The same in every record.
        counted, ///< As this very record says.
    };

    /// Begins a member of an object. Its value follows.
    /// @param name plain letters, which stay as they are as long as the program runs
    virtual void key(char const* name) = 0;

    /// @name Values
    /// @{
    virtual void integer(std::int64_t value) = 0;       ///< A whole number.
    virtual void real(float value) = 0;                 ///< Of single precision; see shortest().
    virtual void real(double value) = 0;                ///< Of double precision.
    virtual void text(std::string_view characters) = 0; ///< In UTF-8; what isn't was taken as Latin-1.
    virtual void bytes(std::string_view bytes) = 0;     ///< Reserved bytes and data without a layout.
    virtual void beginArray(Length length) = 0;         ///< Its elements follow.
    virtual void endArray() = 0;                        ///< Of the innermost array.
    virtual void beginObject() = 0;                     ///< Its members follow.
    virtual void endObject() = 0;                       ///< Of the innermost object.
    /// @}

    /// Takes the end of the array that was the last value back: more elements of it follow.
    virtual void resumeArray() = 0;

    virtual void beginFlags() = 0; ///< A member follows whose bits may be named.
    virtual void endFlags() = 0;   ///< That member has ended.

    /// Names a bit of the last flags of the object that is open. Other members may have come between.
    /// @param name as of key()
    virtual void flag(char const* name, bool isSet) = 0;

    /// The number that has the fewest digits of all that a float stands for: 0.1 rather than
    /// 0.10000000149011612.
    static double shortest(float value)
    {
        char digits[32];
        char const* const end = std::to_chars(digits, digits + sizeof digits, value).ptr;
        double number = 0;
        std::from_chars(digits, end, number);
        return number;
    }

protected:
    /// Receivers are owned as what they are.
    ~FltFieldReceiver() = default;
};
