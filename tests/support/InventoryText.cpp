#include "support/InventoryText.h"

#include <sstream>

namespace
{

using Inventory = FltInventory;

/// A number of a list as people read it: "-" for none.
struct At {
    std::uint32_t number;
};

std::ostream& operator<<(std::ostream& os, At const& at)
{
    return at.number == Inventory::none ? os << '-' : os << at.number;
}

void write(std::ostream& os, Inventory::Header const& header)
{
    os << "header \"" << header.name << "\" revision " << header.revision << " edit " << header.editRevision
       << " last changed \"" << header.lastChange << "\"\n  units " << header.units << " times "
       << header.unitMultiplier << " projection " << header.projection << " ellipsoid " << header.ellipsoid
       << "\n  origin " << header.originLatitude << ' ' << header.originLongitude << " from "
       << header.southWestLatitude << ' ' << header.southWestLongitude << " to " << header.northEastLatitude
       << ' ' << header.northEastLongitude << '\n';
}

void writeOpcodes(std::ostream& os, Inventory const& inventory)
{
    for (auto const& [opcode, facts] : inventory.opcodes)
        os << "opcode " << opcode << ": " << facts.count << " records of " << facts.bytes
           << " bytes, the first at " << facts.first << '\n';
}

void writeNodes(std::ostream& os, Inventory const& inventory)
{
    for (std::uint32_t number = 0; number < inventory.nodes.size(); ++number) {
        Inventory::Node const& node = inventory.nodes[number];
        os << "node " << number << " at " << node.offset << " to " << node.end << ": " << node.opcode << " \""
           << node.name << "\" below " << At{node.parent} << " depth " << node.depth << " children "
           << node.children << " faces " << node.faces << " path \"" << inventory.pathOf(number) << "\"\n";
    }
}

void writeVertices(std::ostream& os, Inventory const& inventory)
{
    for (std::uint32_t number = 0; number < inventory.vertices.size(); ++number) {
        Inventory::Vertex const& vertex = inventory.vertices[number];
        std::array<double, 3> const place = inventory.position(number);
        os << "vertex " << number << " at " << vertex.offset << ": " << int(vertex.opcode)
           << (vertex.isWhole ? "" : " cut") << " (" << place[0] << ", " << place[1] << ", " << place[2]
           << ")\n";
    }
}

void write(std::ostream& os, Inventory::Surface const& surface)
{
    os << " at " << surface.offset << " below " << At{surface.node} << ": color " << surface.color
       << " texture " << surface.texture << " detail " << surface.detailTexture << " material "
       << surface.material << " mapping " << surface.mapping << " flags " << std::hex << surface.flags
       << std::dec << " draw " << int(surface.drawType) << " template " << int(surface.templateMode)
       << " light " << int(surface.lightMode) << " line " << int(surface.lineStyle)
       << (surface.isSubface ? " subface" : "") << (surface.hasPackedColor() ? " packed" : "")
       << (surface.hasNoColor() ? " uncoloured" : "");
}

void writeSurfaces(std::ostream& os, Inventory const& inventory)
{
    for (Inventory::Face const& face : inventory.faces) {
        os << "face";
        write(os, face);
        os << "\n  vertices";
        for (std::uint32_t i = 0; i < face.vertexCount; ++i)
            os << ' ' << At{inventory.faceVertices[face.firstVertex + i]};
        os << '\n';
    }
    for (Inventory::LostOffset const& lost : inventory.lostOffsets)
        os << "lost offset " << lost.value << " at " << lost.record << " of face " << At{lost.face} << '\n';
    for (Inventory::Mesh const& mesh : inventory.meshes) {
        os << "mesh \"" << mesh.name << '"';
        write(os, mesh);
        os << "\n  " << (mesh.hasPool ? "a pool of " : "no pool ") << mesh.poolVertices << ", "
           << mesh.wholeVertices << " whole, mask " << std::hex << mesh.poolMask << std::dec << '\n';
        for (Inventory::Primitive const& primitive : mesh.primitives)
            os << "  primitive at " << primitive.offset << ": type " << primitive.type << ", "
               << primitive.indexCount << " indices, " << primitive.badIndices << " bad\n";
    }
    os << inventory.triangles() << " triangles\n";
}

void writePalette(std::ostream& os, char const* what, Inventory::Palette const& palette)
{
    for (auto const& [index, entry] : palette) {
        os << what << ' ' << index << " at " << entry.offset << ": \"" << entry.name << "\" uses "
           << entry.uses;
        if (entry.repetition != 0)
            os << " again at " << entry.repetition;
        os << '\n';
    }
}

void writePalettes(std::ostream& os, Inventory const& inventory)
{
    writePalette(os, "texture", inventory.textures);
    writePalette(os, "material", inventory.materials);
    writePalette(os, "line style", inventory.lineStyles);
    writePalette(os, "texture mapping", inventory.textureMappings);
    writePalette(os, "light", inventory.lights);
    os << (inventory.hasColorPalette ? "a" : "no") << " colour palette, "
       << (inventory.hasOldMaterialPalette ? "an" : "no") << " old material palette\n";
}

void writeInstances(std::ostream& os, char const* what, std::vector<Inventory::Instance> const& instances)
{
    for (Inventory::Instance const& instance : instances)
        os << what << ' ' << instance.number << " of node " << At{instance.node} << '\n';
}

void writeSpecialNodes(std::ostream& os, Inventory const& inventory)
{
    for (Inventory::Reference const& reference : inventory.references)
        os << "reference at " << reference.offset << " of node " << At{reference.node} << ": \""
           << reference.path << "\"\n";
    for (Inventory::LevelOfDetail const& lod : inventory.levelsOfDetail)
        os << "level of detail of node " << At{lod.node} << ": out " << lod.switchOut << " in "
           << lod.switchIn << " centre " << lod.centre[0] << ' ' << lod.centre[1] << ' ' << lod.centre[2]
           << '\n';
    for (Inventory::Switch const& one : inventory.switches) {
        os << "switch of node " << At{one.node} << ": mask " << one.currentMask << " of " << one.maskCount
           << ", words " << one.wordsPerMask << ':' << std::hex;
        for (std::uint32_t const word : one.words)
            os << ' ' << word;
        os << std::dec << '\n';
    }
    for (Inventory::DegreeOfFreedom const& joint : inventory.degreesOfFreedom) {
        os << "degree of freedom of node " << At{joint.node} << '\n';
        for (std::size_t i = 0; i < joint.ranges.size(); ++i)
            os << "  " << Inventory::DegreeOfFreedom::nameOf(i) << ' ' << joint.ranges[i].current << " from "
               << joint.ranges[i].least << " to " << joint.ranges[i].most
               << (joint.ranges[i].isLimited ? " limited" : "") << '\n';
    }
    writeInstances(os, "instance definition", inventory.instanceDefinitions);
    writeInstances(os, "instance reference", inventory.instanceReferences);
    writeInstances(os, "light source", inventory.lightSources);
    for (Inventory::Matrix const& matrix : inventory.matrices)
        os << "matrix at " << matrix.offset << " of node " << At{matrix.node} << ": determinant "
           << matrix.determinant << '\n';
}

void writeFaults(std::ostream& os, Inventory const& inventory)
{
    using Kind = Inventory::Imbalance::Kind;
    for (Inventory::Imbalance const& imbalance : inventory.imbalances)
        os << (imbalance.kind == Kind::popWithoutPush    ? "pop without push at "
               : imbalance.kind == Kind::pushWithoutNode ? "push without node at "
                                                         : "never closed at ")
           << imbalance.offset << '\n';
    for (Inventory::Stray const& stray : inventory.strays)
        os << "stray at " << stray.offset << ": " << stray.opcode << '\n';
    for (Inventory::TooDeep const& node : inventory.tooDeep)
        os << "too deep at " << node.offset << ": " << node.opcode << " below " << At{node.node} << '\n';
    for (Inventory::Complaint const& complaint : inventory.complaints)
        os << "complaint at " << complaint.offset << " of " << complaint.opcode << ": " << complaint.text
           << '\n';
    for (Inventory::ShortRecord const& record : inventory.shortRecords)
        os << "short record at " << record.offset << ": " << record.opcode << " has " << record.length
           << " of " << record.leastLength << " bytes\n";
    os << "fault " << static_cast<int>(inventory.fault()) << " at " << inventory.faultOffset() << '\n';
}

} // namespace

std::string inventoryText(FltInventory const& inventory)
{
    std::ostringstream os;
    os << inventory.bytes() << " bytes, " << inventory.records() << " records\n";
    write(os, inventory.header);
    writeOpcodes(os, inventory);
    writeNodes(os, inventory);
    writeVertices(os, inventory);
    writeSurfaces(os, inventory);
    writePalettes(os, inventory);
    writeSpecialNodes(os, inventory);
    writeFaults(os, inventory);
    return os.str();
}
