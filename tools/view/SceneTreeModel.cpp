#include "view/SceneTreeModel.h"

#include "view/ShownText.h"
#include "view/Visibility.h"

#include <Inventor/misc/SoChildList.h>
#include <Inventor/nodes/SoFile.h>
#include <Inventor/nodes/SoGroup.h>
#include <Inventor/nodes/SoLight.h>
#include <Inventor/nodes/SoShape.h>
#include <Inventor/nodes/SoSwitch.h>
#include <Inventor/nodes/SoVertexProperty.h>
#include <algorithm>
#include <cstring>

namespace
{

/// How many items a search looks at: shared parts of a scene may stand in the tree more often than anybody
/// can wait for.
constexpr int longestSearch = 1000000;

/// Switches around the children of a switch record bear this before its name.
constexpr char wrapperMark[] = "child_of_";

bool isOfType(SoNode const* node, SoType const& type)
{
    return node->isOfType(type) != FALSE;
}

int childCount(SoNode const* node)
{
    SoChildList const* const children = node->getChildren();
    return children != nullptr ? children->getLength() : 0;
}

/// A switch, or a group in one, whose only child stands for it in the tree.
bool isWrapper(SoNode const* node)
{
    if (childCount(node) != 1)
        return false;
    char const* const name = node->getName().getString();
    if (isOfType(node, SoSwitch::getClassTypeId()))
        return *name == '\0' || std::strncmp(name, wrapperMark, sizeof wrapperMark - 1) == 0;
    return node->getTypeId() == SoGroup::getClassTypeId() && *name == '\0';
}

/// Whether a node shows something by itself.
bool isSeen(SoNode const* node)
{
    return isOfType(node, SoShape::getClassTypeId()) || isOfType(node, SoLight::getClassTypeId()) ||
           isOfType(node, SoFile::getClassTypeId());
}

/// Whether a group has more than properties right below it. The palettes of vertices haven't.
bool holdsAnything(SoNode const* node)
{
    if (!isOfType(node, SoGroup::getClassTypeId()))
        return false;
    SoChildList const& children = *node->getChildren();
    for (int i = 0; i < children.getLength(); ++i)
        if (isSeen(children[i]) || isOfType(children[i], SoGroup::getClassTypeId()))
            return true;
    return false;
}

QString faceCount(int faces)
{
    return faces == 1 ? QStringLiteral("1 face") : QString::number(faces) + " faces";
}

} // namespace

struct SceneTreeModel::Item {
    SoNode* node = nullptr;
    Item* parent = nullptr;
    int row = 0;
    /// The children to go down by, from the parent's node to this one. The switches that hide single children
    /// aren't counted.
    std::vector<int> steps;
    bool isCollected = false;
    std::vector<std::unique_ptr<Item>> children;

    /// The group that holds the first node on the way here.
    SoNode* group() const { return parent->node; }
};

SceneTreeModel::SceneTreeModel(QObject* parent) : QAbstractItemModel(parent) {}
SceneTreeModel::~SceneTreeModel() = default;

void SceneTreeModel::setScene(SoNode* scene, RecordFile const* newFile, RecordMatch const* newMatch)
{
    beginResetModel();
    root.reset();
    file = newFile;
    match = newMatch;
    if (scene != nullptr) {
        root = std::make_unique<Item>();
        root->node = scene;
    }
    endResetModel();
}

bool SceneTreeModel::hasItem(SoNode const* node) const
{
    if (isWrapper(node))
        return false;
    return match->recordOf(node) >= 0 || isSeen(node) || holdsAnything(node);
}

void SceneTreeModel::collect(Item& parent, SoNode* node, std::vector<int>& steps) const
{
    for (int i = 0; i < childCount(node); ++i) {
        SoNode* const child = Visibility::child(node, i);
        steps.push_back(i);
        if (hasItem(child)) {
            auto item = std::make_unique<Item>();
            item->node = child;
            item->parent = &parent;
            item->row = static_cast<int>(parent.children.size());
            item->steps = steps;
            parent.children.push_back(std::move(item));
        } else if (isWrapper(child)) {
            collect(parent, child, steps);
        }
        steps.pop_back();
    }
}

std::vector<std::unique_ptr<SceneTreeModel::Item>>& SceneTreeModel::childrenOf(Item& item) const
{
    if (!item.isCollected) {
        item.isCollected = true;
        std::vector<int> steps;
        if (isOfType(item.node, SoGroup::getClassTypeId()))
            collect(item, item.node, steps);
    }
    return item.children;
}

SceneTreeModel::Item* SceneTreeModel::itemOf(QModelIndex const& index) const
{
    return index.isValid() ? static_cast<Item*>(index.internalPointer()) : nullptr;
}

QModelIndex SceneTreeModel::indexOfItem(Item const* item) const
{
    return item != nullptr ? createIndex(item->row, 0, const_cast<Item*>(item)) : QModelIndex();
}

SoNode* SceneTreeModel::node(QModelIndex const& index) const
{
    Item const* const item = itemOf(index);
    return item != nullptr ? item->node : nullptr;
}

HierarchyRecord const* SceneTreeModel::record(QModelIndex const& index) const
{
    Item const* const item = itemOf(index);
    int const record = item != nullptr ? match->recordOf(item->node) : -1;
    return record >= 0 ? &file->hierarchy()[static_cast<std::size_t>(record)] : nullptr;
}

SoPath* SceneTreeModel::path(QModelIndex const& index) const
{
    std::vector<Item const*> way;
    for (Item const* item = itemOf(index); item != nullptr; item = item->parent)
        way.push_back(item);
    if (way.empty())
        return nullptr;
    auto* const path = new SoPath(way.back()->node);
    for (auto item = way.rbegin() + 1; item != way.rend(); ++item)
        for (int const step : (*item)->steps) {
            path->append(step);
            if (Visibility::isOwnSwitch(path->getTail()))
                path->append(0);
        }
    return path;
}

QModelIndex SceneTreeModel::indexOf(SoPath const& path) const
{
    if (root == nullptr || path.getLength() == 0 || path.getNode(0) != root->node)
        return {};
    std::vector<int> steps;
    for (int i = 1; i < path.getLength(); ++i)
        if (!Visibility::isOwnSwitch(path.getNode(i - 1)))
            steps.push_back(path.getIndex(i));
    Item* item = root.get();
    std::size_t done = 0;
    for (bool isDeeper = true; isDeeper;) {
        isDeeper = false;
        for (auto const& child : childrenOf(*item)) {
            if (child->steps.size() > steps.size() - done ||
                !std::equal(child->steps.begin(), child->steps.end(),
                            steps.begin() + static_cast<std::ptrdiff_t>(done)))
                continue;
            done += child->steps.size();
            item = child.get();
            isDeeper = true;
            break;
        }
    }
    return indexOfItem(item);
}

QString SceneTreeModel::address(QModelIndex const& index) const
{
    QString text;
    for (Item const* item = itemOf(index); item != nullptr && item->parent != nullptr; item = item->parent)
        text.prepend("/" + nameOf(item->node));
    return text;
}

QModelIndex SceneTreeModel::indexOfAddress(QString const& address) const
{
    Item* item = root.get();
    for (QString const& name : address.split('/', Qt::SkipEmptyParts)) {
        if (item == nullptr)
            break;
        auto const& children = childrenOf(*item);
        auto const found = std::find_if(children.begin(), children.end(),
                                        [&](auto const& child) { return nameOf(child->node) == name; });
        item = found != children.end() ? found->get() : nullptr;
    }
    return indexOfItem(item);
}

SceneTreeModel::Item* SceneTreeModel::next(Item* item) const
{
    if (!childrenOf(*item).empty())
        return item->children.front().get();
    for (; item->parent != nullptr; item = item->parent) {
        auto const following = static_cast<std::size_t>(item->row) + 1;
        if (following < item->parent->children.size())
            return item->parent->children[following].get();
    }
    return item; // the root
}

QModelIndex SceneTreeModel::findNext(QString const& text, QModelIndex const& from) const
{
    Item* const start = from.isValid() ? itemOf(from) : root.get();
    if (start == nullptr || text.isEmpty())
        return {};
    Item* item = start;
    for (int looked = 0; looked < longestSearch; ++looked) {
        item = next(item);
        if (ownNameOf(item->node).contains(text, Qt::CaseInsensitive))
            return indexOfItem(item);
        if (item == start)
            break;
    }
    return {};
}

QModelIndex SceneTreeModel::index(int row, int column, QModelIndex const& parent) const
{
    if (column < 0 || column >= columns || row < 0 || row >= rowCount(parent))
        return {};
    Item* const item =
        parent.isValid() ? childrenOf(*itemOf(parent))[static_cast<std::size_t>(row)].get() : root.get();
    return createIndex(row, column, item);
}

QModelIndex SceneTreeModel::parent(QModelIndex const& index) const
{
    Item const* const item = itemOf(index);
    return item != nullptr ? indexOfItem(item->parent) : QModelIndex();
}

int SceneTreeModel::rowCount(QModelIndex const& parent) const
{
    if (!parent.isValid())
        return root != nullptr ? 1 : 0;
    return parent.column() == nameColumn ? static_cast<int>(childrenOf(*itemOf(parent)).size()) : 0;
}

int SceneTreeModel::columnCount(QModelIndex const& /*parent*/) const
{
    return columns;
}

QString SceneTreeModel::ownNameOf(SoNode const* node) const
{
    int const record = match->recordOf(node);
    if (record >= 0 && !file->hierarchy()[static_cast<std::size_t>(record)].name.empty())
        return QString::fromStdString(file->hierarchy()[static_cast<std::size_t>(record)].name);
    return QString::fromUtf8(node->getName().getString());
}

QString SceneTreeModel::nameOf(SoNode const* node) const
{
    QString const name = ownNameOf(node);
    return name.isEmpty() ? QString::fromUtf8(node->getTypeId().getName().getString()) : name;
}

QString SceneTreeModel::kindOf(SoNode const* node) const
{
    int const index = match->recordOf(node);
    if (index < 0)
        return QString::fromUtf8(node->getTypeId().getName().getString());
    HierarchyRecord const& record = file->hierarchy()[static_cast<std::size_t>(index)];
    QString const kind = RecordFile::kindOf(record.opcode);
    return record.faces > 0 ? kind + ", " + faceCount(record.faces) : kind;
}

QVariant SceneTreeModel::data(QModelIndex const& index, int role) const
{
    Item const* const item = itemOf(index);
    if (item == nullptr)
        return {};
    if (role == Qt::DisplayRole)
        return index.column() == nameColumn ? nameOf(item->node) : kindOf(item->node);
    if (role == Qt::ToolTipRole)
        return ShownText::toolTip(address(index));
    if (role == Qt::CheckStateRole && index.column() == nameColumn && item->parent != nullptr)
        return Visibility::isHidden(item->group(), item->steps.front()) ? Qt::Unchecked : Qt::Checked;
    return {};
}

bool SceneTreeModel::setData(QModelIndex const& index, QVariant const& value, int role)
{
    Item const* const item = itemOf(index);
    if (item == nullptr || item->parent == nullptr || role != Qt::CheckStateRole)
        return false;
    Visibility::setHidden(item->group(), item->steps.front(), value.toInt() == Qt::Unchecked);
    emit dataChanged(index, index, {Qt::CheckStateRole});
    return true;
}

Qt::ItemFlags SceneTreeModel::flags(QModelIndex const& index) const
{
    Item const* const item = itemOf(index);
    if (item == nullptr)
        return Qt::NoItemFlags;
    Qt::ItemFlags const flags = Qt::ItemIsEnabled | Qt::ItemIsSelectable;
    return item->parent != nullptr && index.column() == nameColumn ? flags | Qt::ItemIsUserCheckable : flags;
}

QVariant SceneTreeModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation != Qt::Horizontal || role != Qt::DisplayRole)
        return {};
    return section == nameColumn ? tr("Name") : tr("Kind");
}
