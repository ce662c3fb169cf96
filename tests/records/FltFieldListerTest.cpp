#include "records/FltFieldLister.h"

#include "support/RecordText.h"
#include "support/Text.h"
#include "writer/FltWriter.h"

#include "records/FltRecordFields.h"

#include <gtest/gtest.h>
#include <string>

namespace
{

/// Writes down what it is given.
class Notes final : public FltFieldReceiver
{
public:
    void key(char const* name) override { (text_ += name) += ':'; }
    void integer(std::int64_t value) override { (text_ += std::to_string(value)) += ' '; }
    void real(float value) override { (text_ += std::to_string(value)) += "f "; }
    void real(double value) override { (text_ += std::to_string(value)) += ' '; }
    void text(std::string_view characters) override { ((text_ += '\'') += characters) += "' "; }
    void bytes(std::string_view bytes) override { (text_ += std::to_string(bytes.size())) += " bytes "; }
    void beginArray(Length length) override { text_ += length == Length::fixed ? "[" : "[n "; }
    void endArray() override { text_ += "] "; }
    void beginObject() override { text_ += '{'; }
    void endObject() override { text_ += "} "; }
    void resumeArray() override { text_ += "+"; }
    void beginFlags() override { text_ += '<'; }
    void endFlags() override { text_ += '>'; }
    void flag(char const* name, bool isSet) override { ((text_ += name) += isSet ? "=1 " : "=0 "); }

    std::string const& all() const { return text_; }

private:
    std::string text_;
};

std::string fieldsOf(FltWriter const& flt)
{
    Notes notes;
    FltRecordFields::give(*decodeLast(flt), notes);
    return notes.all();
}

} // namespace

TEST(FltFieldLister, tellsWhichListsAreOfOneLengthInEveryRecord)
{
    FltWriter matrix;
    matrix.add("Matrix", {{"matrix", {1, 2}}});
    EXPECT_TRUE(holds(fieldsOf(matrix), ":[[1.000000f 2.000000f ")) << fieldsOf(matrix);
    FltWriter list;
    list.add("MorphVertexList", {{"offsets", {8, 48}}});
    EXPECT_TRUE(holds(fieldsOf(list), ":[n {")) << fieldsOf(list);
}

TEST(FltFieldLister, goesOnInTheArrayOfBlocksThatFollowOneAnother)
{
    FltWriter palette(1420);
    palette.add("OLDMaterialPalette");
    EXPECT_TRUE(holds(fieldsOf(palette), "} ] +{")) << fieldsOf(palette).substr(0, 400);
}

TEST(FltFieldLister, standsAroundFlagsWhateverTheirType)
{
    FltWriter source;
    source.add("LightSource", {{"idASCII", "lamp"}});
    EXPECT_TRUE(holds(fieldsOf(source), "<flags:[0 0 0 0 ] >enabled=0 global=0 ")) << fieldsOf(source);
    FltWriter face;
    face.add("Face");
    EXPECT_TRUE(holds(fieldsOf(face), "<flags:0 >")) << fieldsOf(face);
}

TEST(FltFieldLister, takesTextForLatin1UnlessItIsUtf8)
{
    FltWriter flt;
    flt.add("Group", {{"idASCII", "caf\xe9"}});
    EXPECT_TRUE(holds(fieldsOf(flt), "'caf\xc3\xa9'")) << fieldsOf(flt);
}
