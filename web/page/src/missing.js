// What the page lacks of the database: files that weren't found, and what isn't shown.

import { element, numberText } from "./dom.js";
import { section, textList } from "./panel.js";

/** @param facts as the page holds them @return null if nothing is missing */
export function missingSection({ missingTextures, missingFiles, omissions }) {
    const groups = [
        ["Textures that weren't found", missingTextures],
        ["Databases that weren't found", missingFiles],
        ["Not shown", omissions.map(({ kind, count }) => `${kind}: ${numberText(count)}`)],
    ].filter(([, lines]) => lines.length > 0);
    if (groups.length === 0)
        return null;
    return section("What is missing", missingTextures.length + missingFiles.length + omissions.length,
        ...groups.flatMap(([title, lines]) => [element("h2", {}, title), textList(lines)]));
}
