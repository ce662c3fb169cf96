#pragma once

#include <string_view>
#include <vector>

/// How the writer puts a value into a record.
enum class FltKind { chars, bytes, i8, u8, i16, u16, i32, u32, f32, f64 };

/// One field of a record's layout, in file order.
struct FltField {
    std::string_view name; ///< As the system names it; "" for bytes without a name.
    FltKind kind;
    int count = 1;        ///< Values of the field, or bytes of a text. rest: as many as the test gives.
    long initial = 0;     ///< What stands there unless the test says otherwise.
    int fromRevision = 0; ///< The field is there from this revision on
    int belowRevision = 1 << 30; ///< and below this one.

    static constexpr int rest = -1;

    constexpr FltField is(long value) const
    {
        FltField field = *this;
        field.initial = value;
        return field;
    }
    constexpr FltField from(int revision) const
    {
        FltField field = *this;
        field.fromRevision = revision;
        return field;
    }
    constexpr FltField below(int revision) const
    {
        FltField field = *this;
        field.belowRevision = revision;
        return field;
    }
};

/// The layout of a record, by the name of its class without the "FltRecord".
struct FltLayout {
    std::string_view name;
    int opcode;
    std::vector<FltField> fields;
};

/// Bytes of one value.
int sizeOf(FltKind kind);

/// Every record that a test may write.
std::vector<FltLayout> const& fltLayouts();
