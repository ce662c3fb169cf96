#pragma once

#include <charconv>
#include <cstdint>
#include <string>
#include <string_view>
#include <type_traits>

/// Writes JSON as text, value by value, without a tree of them. The one place that knows how a number, a text
/// and bytes look.
class FltJsonText
{
public:
    /// @param text to which everything is appended. It has to outlive this object.
    explicit FltJsonText(std::string& text) : text(text) {}

    /// Begins a member of an object. A value follows.
    void key(std::string_view name)
    {
        separate();
        text += '"';
        text += name;
        text += "\":";
        isFirst = true;
    }

    /// @name Values
    /// In an array, or after a key. Names of members, and keys, are plain letters.
    /// @{
    template <class Number>
    std::enable_if_t<std::is_integral_v<Number>> value(Number number)
    {
        separate();
        char digits[24];
        text.append(digits, std::to_chars(digits, digits + sizeof digits, std::int64_t(number)).ptr);
    }
    void value(float number);  ///< In the fewest digits that are this float.
    void value(double number); ///< One that JSON doesn't have is a text.
    void value(bool truth);

    /// Text whose bytes aren't UTF-8 is taken as Latin-1, and what a terminal would obey is escaped.
    void value(std::string_view characters);

    /// Two hexadecimal digits a byte.
    void hexadecimal(std::string_view bytes);
    /// @}

    /// Begins and ends an array '[' ']' or an object '{' '}'.
    /// @{
    void open(char bracket)
    {
        separate();
        text += bracket;
        isFirst = true;
    }
    void close(char bracket)
    {
        text += bracket;
        isFirst = false;
    }
    /// @}

    /// Takes the end of an array or an object back, so that more can follow in it.
    void reopen()
    {
        text.pop_back();
        isFirst = false;
    }

    /// Bytes written so far.
    std::size_t size() const { return text.size(); }

    /// Puts text where bytes are written already.
    void insert(std::size_t at, std::string_view inserted) { text.insert(at, inserted); }

private:
    void separate()
    {
        if (!isFirst)
            text += ',';
        isFirst = false;
    }

    std::string& text;
    bool isFirst = true;
};
