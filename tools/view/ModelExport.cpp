#include "view/ModelExport.h"

#include "iv/SceneFile.h"
#include "iv/VrmlPictureFiles.h"
#include "support/FileEnding.h"
#include "support/LoaderOptions.h"
#include "support/OutputFile.h"
#include "support/ToolError.h"
#include "view/VisualPart.h"

#include "gltf/FltGltf.h"
#include "obj/FltObj.h"

#include <Inventor/nodes/SoSeparator.h>
#include <QFileInfo>
#include <QObject>
#include <algorithm>
#include <cstring>
#include <iterator>

namespace
{

/// What a file can't tell.
struct Losses {
    std::vector<FltOmission> omissions;
    std::vector<std::string> missingTextures;

    QString describe() const
    {
        QStringList parts;
        for (FltOmission const& omission : omissions)
            parts << QString("%1 (%2)").arg(QString::fromStdString(omission.kind)).arg(omission.count);
        for (std::string const& texture : missingTextures)
            parts << QObject::tr("the texture %1, which isn't found").arg(QString::fromStdString(texture));
        return parts.isEmpty() ? QString() : QObject::tr("Not in it: %1.").arg(parts.join("; "));
    }
};

template <class Write>
void writeWhole(std::string const& path, std::vector<KeptFile> const& kept, Write write)
{
    OutputFile output(path, kept);
    write(output.stream());
    output.commit();
}

Losses writeInventor(FltVisual const& visual, std::string const& path, std::vector<KeptFile> const& kept)
{
    FltScene const scene = FltLoader::makeScene(visual);
    writeWhole(path, kept, [&](FILE* stream) { SceneFile::write(scene.root(), stream, SceneForm()); });
    return {};
}

Losses writeVrml(FltVisual const& visual, std::string const& path, std::vector<KeptFile> const& kept)
{
    FltVrmlWriter vrml(visual.root, visual.textures);
    VrmlPictureFiles pictures(path, kept, OutputFile::Existing::replace);
    for (FltVrmlPicture& picture : vrml.pictures())
        pictures.place(picture);
    writeWhole(path, kept, [&](FILE* stream) { SceneFile::write(vrml, {}, stream, SceneForm()); });
    return {vrml.omissions(), {}};
}

Losses writeGltf(FltVisual const& visual, std::string const& path, std::vector<KeptFile> const& /*kept*/)
{
    FltGltfReport const report = FltGltf::write(visual, path);
    return {report.omissions, report.missingTextures};
}

Losses writeObj(FltVisual const& visual, std::string const& path, std::vector<KeptFile> const& /*kept*/)
{
    FltGltfReport const report = FltObj::write(visual, path);
    return {report.omissions, report.missingTextures};
}

struct Form {
    char const* ending;
    char const* name;
    Losses (*write)(FltVisual const&, std::string const& path, std::vector<KeptFile> const& kept);
    bool hasExact = false; ///< Whether a scene of the exact conversion can be written so.
};

constexpr Form forms[] = {
    {".glb", "glTF in one file", writeGltf},       {".gltf", "glTF in several files", writeGltf},
    {".html", "Page for browsers", writeGltf},     {".obj", "OBJ", writeObj},
    {".iv", "Open Inventor", writeInventor, true}, {".wrl", "VRML97", writeVrml, true},
};

/// None for an ending that isn't known.
Form const* formOf(std::string const& path)
{
    auto const* const form = std::find_if(std::begin(forms), std::end(forms), [&](Form const& each) {
        return FileEnding::of(path) == each.ending;
    });
    return form != std::end(forms) ? form : nullptr;
}

void writeExact(FltLoader const& loader, std::string const& database, std::string const& path,
                Form const& form)
{
    if (!form.hasExact)
        throw ToolError("the exact conversion can be saved as .iv or .wrl alone");
    FltScene const scene = loader.load(database);
    SceneForm sceneForm;
    sceneForm.isVrml = form.write == writeVrml;
    writeWhole(path, LoaderOptions().keptFiles(database, scene),
               [&](FILE* stream) { SceneFile::write(scene.root(), stream, sceneForm); });
}

FltVisual partOf(FltVisual whole, FltRecordPlace const& place)
{
    std::optional<FltVisual> part = VisualPart::of(std::move(whole), place);
    if (!part)
        throw ToolError("there is nothing to be seen of the selected part");
    return *std::move(part);
}

} // namespace

QString ModelExport::filters()
{
    QStringList filters;
    for (Form const& form : forms)
        filters << QString("%1 (*%2)").arg(QObject::tr(form.name), form.ending);
    return filters.join(";;");
}

QString ModelExport::withEnding(QString const& name, QString const& filter)
{
    Form const* const form = formOf(name.toStdString());
    QString const stem = form != nullptr ? name.chopped(static_cast<int>(std::strlen(form->ending))) : name;
    return stem + filter.section("(*", 1).section(')', 0, 0);
}

QString ModelExport::write(std::string const& path) const
{
    Form const* const form = formOf(path);
    if (form == nullptr)
        throw ToolError(path + ": this program can't write such a file. Choose another ending.");
    FltLoader saving = loader;
    saving.log.reset();
    saving.origin = FltLoader::Origin::stored;
    saving.textureNamesFrom = QFileInfo(QString::fromStdString(path)).path().toStdString();
    if (saving.exact) {
        writeExact(saving, database, path, *form);
        return {};
    }
    FltVisual visual = saving.loadVisual(database);
    if (part)
        visual = partOf(std::move(visual), *part);
    return form->write(visual, path, LoaderOptions().keptFiles(database, visual.references, visual.textures))
        .describe();
}
