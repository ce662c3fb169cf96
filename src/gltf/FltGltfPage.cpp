#include "gltf/FltGltfPage.h"

#include "gltf/FltBase64.h"
#include "gltf/FltGltf.h"
#include "gltf/FltGltfFiles.h"
#include "gltf/FltGltfPageParts.h"
#include "gltf/FltGzip.h"

#include "messages/FltText.h"

#include <algorithm>
#include <charconv>
#include <cstddef>
#include <filesystem>
#include <iterator>
#include <nlohmann/json.hpp>

namespace
{

/// The text as markup that shows it.
std::string escaped(std::string const& text)
{
    std::string markup;
    for (char const character : FltText::printable(text))
        switch (character) {
        case '&':
            markup += "&amp;";
            break;
        case '<':
            markup += "&lt;";
            break;
        case '>':
            markup += "&gt;";
            break;
        case '"':
            markup += "&quot;";
            break;
        default:
            markup += character;
        }
    return markup;
}

nlohmann::json readable(std::vector<std::string> const& texts)
{
    nlohmann::json list = nlohmann::json::array();
    for (std::string const& text : texts)
        list.push_back(FltText::printable(text));
    return list;
}

/// The facts as JSON that no parser of HTML takes for markup.
std::string scriptData(FltGltfPage::Facts const& facts)
{
    nlohmann::json omissions = nlohmann::json::array();
    for (FltOmission const& omission : facts.omissions)
        omissions.push_back({{"kind", FltText::printable(omission.kind)}, {"count", omission.count}});
    nlohmann::json const data = {{"missingTextures", readable(facts.missingTextures)},
                                 {"missingFiles", readable(facts.missingFiles)},
                                 {"omissions", std::move(omissions)}};
    std::string text;
    for (char const character : data.dump())
        if (character == '<')
            text += "\\u003c";
        else
            text += character;
    return text;
}

/// What has no form in glTF, but one in the page.
constexpr std::string_view shownByThePage[] = {"flip-books that play", "texts",
                                               "turning faces, which stand still"};

FltGltfPage::Facts factsOf(FltVisual const& visual, FltGltfReport const& report)
{
    FltGltfPage::Facts facts;
    facts.title = std::filesystem::path(visual.files.empty() ? visual.info.name : visual.files.front())
                      .filename()
                      .string();
    facts.missingTextures = report.missingTextures;
    for (FltReference const& reference : visual.references)
        if (reference.path.empty())
            facts.missingFiles.push_back(reference.name);
    facts.omissions = visual.omissions;
    facts.omissions.insert(facts.omissions.end(), report.omissions.begin(), report.omissions.end());
    return facts;
}

/// The page of a visual. @param report is filled, but for files
std::string pageOf(FltVisual const& visual, FltGltfOptions const& options, FltGltfReport& report)
{
    FltGltfOptions own = options;
    own.keepsHidden = own.keepsLevels = own.hasExtras = true;
    own.usesInstancing = own.quantizes = own.compresses = false; // the page is compressed as a whole
    own.textureDirectory.reset();
    std::string const glb = FltGltf::glb(visual, own, &report);
    auto const isShown = [](FltOmission const& omission) {
        return std::find(std::begin(shownByThePage), std::end(shownByThePage), omission.kind) !=
               std::end(shownByThePage);
    };
    report.omissions.erase(std::remove_if(report.omissions.begin(), report.omissions.end(), isShown),
                           report.omissions.end());
    std::string page = FltGltfPage::html(glb, factsOf(visual, report));
    report.bytes = page.size();
    return page;
}

/// As a content security policy names a text.
/// @param sum its SHA-256 in hexadecimal digits
std::string policyName(std::string_view sum)
{
    std::string bytes;
    for (std::size_t at = 0; at + 1 < sum.size(); at += 2) {
        unsigned value = 0;
        std::from_chars(sum.data() + at, sum.data() + at + 2, value, 16);
        bytes += static_cast<char>(value);
    }
    std::string name = "sha256-";
    FltBase64::append(name, bytes);
    return name;
}

} // namespace

FltGltfReport FltGltfPage::write(FltVisual const& visual, std::string const& path,
                                 FltGltfOptions const& options)
{
    FltGltfReport report;
    FltGltfFiles files(visual, path, "");
    std::string const page = pageOf(visual, options, report);
    files.add(path, [&](auto const& take) { take(page); });
    report.files = files.commit();
    return report;
}

FltGltfReport FltGltfPage::writeStream(FltVisual const& visual, FILE* stream, FltGltfOptions const& options)
{
    FltGltfReport report;
    std::string const page = pageOf(visual, options, report);
    std::fwrite(page.data(), 1, page.size(), stream);
    return report;
}

std::string FltGltfPage::html(std::string_view glb, Facts const& facts)
{
    std::string const model = FltGzip::packed(glb);
    std::string text;
    text.reserve(FltGltfPageParts::page.size() + FltGltfPageParts::style.size() +
                 FltGltfPageParts::script.size() + model.size() / 3 * 4 + 4096);
    std::string_view rest = FltGltfPageParts::page;
    // What fills a gap is looked at no further: it may hold the words of gaps.
    for (std::size_t gap = rest.find('@'); gap != std::string_view::npos; gap = rest.find('@')) {
        text += rest.substr(0, gap);
        rest.remove_prefix(gap + 1);
        std::size_t const end = rest.find('@');
        std::string_view const word = rest.substr(0, end);
        rest.remove_prefix(end + 1);
        if (word == "TITLE")
            text += escaped(facts.title);
        else if (word == "STYLE")
            text += FltGltfPageParts::style;
        else if (word == "STYLE_NAME")
            text += policyName(FltGltfPageParts::styleSum);
        else if (word == "SCRIPT")
            text += FltGltfPageParts::script;
        else if (word == "SCRIPT_NAME")
            text += policyName(FltGltfPageParts::scriptSum);
        else if (word == "FACTS")
            text += scriptData(facts);
        else if (word == "MODEL")
            FltBase64::append(text, model);
    }
    text += rest;
    return text;
}
