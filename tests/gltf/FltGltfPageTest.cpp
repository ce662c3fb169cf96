#include "gltf/FltGltfPage.h"

#include "gltf/FltGltf.h"
#include "loader/FltLoader.h"
#include "messages/FltText.h"
#include "support/MemoryStream.h"
#include "support/ScratchFolder.h"
#include "writer/FltWriter.h"

#include <gtest/gtest.h>

namespace
{

std::size_t countOf(std::string const& part, std::string const& text)
{
    std::size_t count = 0;
    for (std::size_t at = text.find(part); at != std::string::npos; at = text.find(part, at + 1))
        ++count;
    return count;
}

/// What stands between two texts; the first time.
std::string between(std::string const& begin, std::string const& end, std::string const& text)
{
    std::size_t const from = text.find(begin);
    EXPECT_NE(from, std::string::npos) << begin;
    return text.substr(from + begin.size(), text.find(end, from) - from - begin.size());
}

std::string titleOf(std::string const& title)
{
    return between("<title>", "</title>", FltGltfPage::html("model", {title, {}, {}, {}}));
}

constexpr char factsBegin[] = "id=\"facts\">";
constexpr char modelBegin[] = "id=\"model\">";

} // namespace

TEST(FltGltfPage, escapesItsTitle)
{
    EXPECT_EQ(titleOf("A & B <b>\"C\"</title>"), "A &amp; B &lt;b&gt;&quot;C&quot;&lt;/title&gt;");
}

TEST(FltGltfPage, fillsEachGapOnceWhateverTheTitleSays)
{
    std::string const page = FltGltfPage::html("model", {"@MODEL@", {}, {}, {}});
    EXPECT_EQ(countOf("@MODEL@", page), 2U); // the title and the heading
    EXPECT_EQ(countOf("@TITLE@", page), 0U);
    EXPECT_EQ(countOf("<script", page),
              countOf("<script", FltGltfPage::html("model", {"plain", {}, {}, {}})));
}

TEST(FltGltfPage, isUtf8WhateverTheTextsHold)
{
    FltGltfPage::Facts const facts = {"\xff\xfe", {"roof\x80.rgb"}, {"\xc3"}, {{"\xe2\x82", 1}}};
    std::string const page = FltGltfPage::html("model", facts);
    EXPECT_EQ(FltText::utf8(page), page);
    EXPECT_EQ(titleOf("caf\xc3\xa9"), "caf\xc3\xa9");
}

TEST(FltGltfPage, holdsFactsThatNoParserTakesForMarkup)
{
    std::string const page =
        FltGltfPage::html("model", {"x", {"</script><script>alert(1)</script>"}, {"<!--"}, {{"sound", 3}}});
    EXPECT_EQ(
        between(factsBegin, "</script>", page),
        R"({"missingFiles":["\u003c!--"],"missingTextures":["\u003c/script>\u003cscript>alert(1)\u003c/script>"],)"
        R"("omissions":[{"count":3,"kind":"sound"}]})");
}

TEST(FltGltfPage, holdsTheModelAsLettersAlone)
{
    std::string const page = FltGltfPage::html(std::string(1000, '<'), {"x", {}, {}, {}});
    std::string const model = between(modelBegin, "</script>", page);
    EXPECT_EQ(model.substr(0, 5), "H4sIA"); // gzip
    EXPECT_EQ(model.find_first_not_of("ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/="),
              std::string::npos);
}

TEST(FltGltfPage, allowsItsOwnScriptAndStyleAndNothingElse)
{
    std::string const policy =
        between("Content-Security-Policy\" content=\"", "\">", FltGltfPage::html("model", {"x", {}, {}, {}}));
    EXPECT_EQ(policy.find("unsafe"), std::string::npos) << policy;
    EXPECT_EQ(policy.find(':'), std::string::npos) << policy;
    EXPECT_EQ(policy.find('*'), std::string::npos) << policy;
    EXPECT_EQ(policy.rfind("default-src 'none'; script-src 'sha256-", 0), 0U) << policy;
    EXPECT_EQ(countOf("'sha256-", policy), 2U) << policy;
}

TEST(FltGltfPage, isTheSameEachTime)
{
    FltGltfPage::Facts const facts = {"x", {"a"}, {"b"}, {{"c", 1}}};
    EXPECT_EQ(FltGltfPage::html("model", facts), FltGltfPage::html("model", facts));
}

TEST(FltGltfPage, tellsWhatTheDatabaseLacks)
{
    ScratchFolder const folder;
    FltWriter flt(1570);
    flt.add("TexturePattern", {{"fileName", "roof.rgb"}}).vertexPalette();
    std::vector<double> corners;
    for (auto const& [x, y] : {std::pair{0.0, 0.0}, {1.0, 0.0}, {0.0, 1.0}})
        corners.push_back(flt.vertex("VertexColorUv", x, y, 0, {{"texture", {x, y}}}));
    flt.push().add("ExternalReference", {{"asciiPath", "other.flt"}});
    flt.add("Object").push().face(corners, {{"texturePatternIndex", 0}});
    flt.save(folder / "house <1>.flt");

    MemoryStream const stream;
    FltGltfReport const report =
        FltGltfPage::writeStream(FltLoader().loadVisual(folder / "house <1>.flt"), stream);
    std::string const page = stream.text();
    EXPECT_EQ(between("<title>", "</title>", page), "house &lt;1&gt;.flt");
    EXPECT_EQ(between(factsBegin, "</script>", page),
              R"({"missingFiles":["other.flt"],"missingTextures":["roof.rgb"],)"
              R"("omissions":[{"count":1,"kind":"external reference that can't be read"}]})");
    EXPECT_EQ(report.bytes, page.size());
    EXPECT_EQ(report.triangles, 1U);
}

TEST(FltGltfPage, isWrittenByTheDoorOfAllForms)
{
    ScratchFolder const folder;
    FltWriter flt(1570);
    flt.push().add("Group", {{"idASCII", "empty"}});
    flt.save(folder / "model.flt");
    FltVisual const visual = FltLoader().loadVisual(folder / "model.flt");
    FltGltfReport const report = FltGltf::write(visual, folder / "model.HTML");
    EXPECT_EQ(report.files, std::vector<std::string>{folder / "model.HTML"});
    MemoryStream const stream;
    FltGltfPage::writeStream(visual, stream);
    EXPECT_EQ(contentsOf(folder / "model.HTML"), stream.text());
}
