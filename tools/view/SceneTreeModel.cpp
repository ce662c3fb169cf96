#include "view/SceneTreeModel.h"

#include "records/FltOpcode.h"
#include "records/FltOpcodeName.h"
#include "toolkit/SoNodeName.h"
#include "view/SceneRecords.h"
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
#include <iterator>
#include <limits>
#include <utility>

namespace
{

/// How many items a search looks at: shared parts of a scene may stand in the tree more often than anybody
/// can wait for.
constexpr int longestSearch = 1000000;

/// How many rows of a group are made at once.
constexpr std::size_t rowsAtOnce = 32;
constexpr std::size_t allRows = std::numeric_limits<std::size_t>::max();

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

QString typeNameOf(SoNode const* node)
{
    return QString::fromUtf8(node->getTypeId().getName().getString());
}

/// What a record is to a person: "Group", "Level of detail".
QString kindOf(SceneRecords::Summary const& record)
{
    QString kind = record.opcode == FltOpcode::header
                       ? QStringLiteral("database")
                       : QString::fromStdString(FltOpcodeName::of(record.opcode));
    kind[0] = kind[0].toUpper();
    return record.faces > 0 ? kind + ", " + faceCount(record.faces) : kind;
}

/// The part of a name with the characters that a node bears for it.
QString asInNodes(std::string const& part)
{
    std::string const noBeginning = "a"; // a name may not begin with every character
    return QString::fromStdString(SoNodeName::uncut(noBeginning + part).substr(noBeginning.size()));
}

} // namespace

struct SceneTreeModel::Item {
    SoNode* node = nullptr;
    Item* parent = nullptr;
    int row = 0;
    /// The children to go down by, from the parent's node to this one. The switches that hide single children
    /// aren't counted.
    std::vector<int> steps;
    int nextChild = 0;                           ///< Of the node, the first that hasn't been looked at.
    std::vector<std::unique_ptr<Item>> children; ///< As far as they are made.

    bool isDescribed = false;
    QString name; ///< Empty if it has none.
    QString kind;

    /// The group that holds the first node on the way here.
    SoNode* group() const { return parent->node; }

    bool hasMore() const { return isOfType(node, SoGroup::getClassTypeId()) && nextChild < childCount(node); }
};

SceneTreeModel::SceneTreeModel(QObject* parent) : QAbstractItemModel(parent) {}
SceneTreeModel::~SceneTreeModel() = default;

void SceneTreeModel::setScene(SoNode* newRoot, FltScene const* newScene, SceneRecords* newRecords)
{
    beginResetModel();
    root.reset();
    made = 0;
    scene = newScene;
    records = newRecords;
    if (newRoot != nullptr) {
        root = std::make_unique<Item>();
        root->node = newRoot;
        made = 1;
    }
    endResetModel();
}

std::optional<FltRecordPlace> SceneTreeModel::placeOf(SoNode const* node) const
{
    return scene != nullptr ? scene->recordOf(*node) : std::nullopt;
}

/// The record that a node stands for, unless the item above does already: the header's may be two.
std::optional<FltRecordPlace> SceneTreeModel::ownPlaceOf(Item const* parent, SoNode const* node) const
{
    std::optional<FltRecordPlace> const place = placeOf(node);
    if (!place || !place->isOwn)
        return std::nullopt;
    std::optional<FltRecordPlace> const above = parent != nullptr ? placeOf(parent->node) : std::nullopt;
    bool const isSame = above && above->offset == place->offset && above->file == place->file;
    return isSame ? std::nullopt : place;
}

bool SceneTreeModel::hasItem(Item const& parent, SoNode const* node) const
{
    if (isWrapper(node))
        return false;
    return isSeen(node) || holdsAnything(node) || ownPlaceOf(&parent, node);
}

void SceneTreeModel::collectAt(Item& parent, SoNode* node, int index, std::vector<int>& steps,
                               Items& items) const
{
    SoNode* const child = Visibility::child(node, index);
    steps.push_back(index);
    if (hasItem(parent, child)) {
        auto item = std::make_unique<Item>();
        item->node = child;
        item->parent = &parent;
        item->row = static_cast<int>(parent.children.size() + items.size());
        item->steps = steps;
        items.push_back(std::move(item));
    } else if (isWrapper(child)) {
        for (int i = 0; i < childCount(child); ++i)
            collectAt(parent, child, i, steps, items);
    }
    steps.pop_back();
}

/// Makes the next items below one, which don't belong to it yet.
SceneTreeModel::Items SceneTreeModel::collect(Item& item, std::size_t most) const
{
    Items items;
    std::vector<int> steps;
    while (item.hasMore() && items.size() < most)
        collectAt(item, item.node, item.nextChild++, steps, items);
    made += static_cast<int>(items.size());
    return items;
}

/// A handful, if there are none yet: views ask for the number of rows first.
SceneTreeModel::Items& SceneTreeModel::firstChildrenOf(Item& item) const
{
    if (item.nextChild == 0)
        item.children = collect(item, rowsAtOnce);
    return item.children;
}

SceneTreeModel::Items& SceneTreeModel::childrenOf(Item& item)
{
    firstChildrenOf(item);
    fetch(item, allRows);
    return item.children;
}

void SceneTreeModel::fetch(Item& item, std::size_t most)
{
    Items items = collect(item, most);
    if (items.empty())
        return;
    int const first = static_cast<int>(item.children.size());
    beginInsertRows(indexOfItem(&item), first, first + static_cast<int>(items.size()) - 1);
    std::move(items.begin(), items.end(), std::back_inserter(item.children));
    endInsertRows();
}

bool SceneTreeModel::canFetchMore(QModelIndex const& parent) const
{
    Item const* const item = itemOf(parent);
    return item != nullptr && parent.column() == nameColumn && item->nextChild > 0 && item->hasMore();
}

void SceneTreeModel::fetchMore(QModelIndex const& parent)
{
    if (canFetchMore(parent))
        fetch(*itemOf(parent), rowsAtOnce);
}

/// Without making rows, if that can be told by looking at a child or two.
bool SceneTreeModel::hasChildren(QModelIndex const& parent) const
{
    Item* const item = itemOf(parent);
    if (item == nullptr)
        return root != nullptr;
    if (parent.column() != nameColumn || item->nextChild > 0 || !item->hasMore())
        return parent.column() == nameColumn && !item->children.empty();
    for (int i = 0; i < childCount(item->node); ++i)
        if (hasItem(*item, Visibility::child(item->node, i)))
            return true;
    return !firstChildrenOf(*item).empty();
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

std::optional<FltRecordPlace> SceneTreeModel::record(QModelIndex const& index) const
{
    Item const* const item = itemOf(index);
    return item != nullptr ? placeOf(item->node) : std::nullopt;
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

QModelIndex SceneTreeModel::indexOf(SoPath const& path)
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
    for (Item* item = itemOf(index); item != nullptr && item->parent != nullptr; item = item->parent)
        text.prepend("/" + nameOf(*item));
    return text;
}

QModelIndex SceneTreeModel::indexOfAddress(QString const& address)
{
    Item* item = root.get();
    for (QString const& name : address.split('/', Qt::SkipEmptyParts)) {
        if (item == nullptr)
            break;
        auto const& children = childrenOf(*item);
        auto const found = std::find_if(children.begin(), children.end(), [&](auto const& child) {
            return mayBeNamed(*child, name) && nameOf(*child) == name;
        });
        item = found != children.end() ? found->get() : nullptr;
    }
    return indexOfItem(item);
}

SceneTreeModel::Item* SceneTreeModel::next(Item* item)
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

QModelIndex SceneTreeModel::findNext(QString const& text, QModelIndex const& from)
{
    Item* const start = from.isValid() ? itemOf(from) : root.get();
    if (start == nullptr || text.isEmpty())
        return {};
    Item* item = start;
    for (int looked = 0; looked < longestSearch; ++looked) {
        item = next(item);
        if (mayBeNamed(*item, text) && ownNameOf(*item).contains(text, Qt::CaseInsensitive))
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
        parent.isValid() ? itemOf(parent)->children[static_cast<std::size_t>(row)].get() : root.get();
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
    return parent.column() == nameColumn ? static_cast<int>(firstChildrenOf(*itemOf(parent)).size()) : 0;
}

int SceneTreeModel::columnCount(QModelIndex const& /*parent*/) const
{
    return columns;
}

/// Reads the record, which is done for those that somebody looks at.
void SceneTreeModel::describe(Item& item) const
{
    if (std::exchange(item.isDescribed, true))
        return;
    std::string const borne = SoNodeName::wholeOf(*item.node);
    item.name = QString::fromStdString(borne);
    item.kind = typeNameOf(item.node);
    std::optional<FltRecordPlace> const place = ownPlaceOf(item.parent, item.node);
    SceneRecords::Summary const record = place ? records->summaryOf(*place) : SceneRecords::Summary();
    if (record.opcode == 0)
        return;
    item.kind = ::kindOf(record);
    bool const isBorne = SoNodeName::uncut(record.name) == SoNodeName::uncut(borne);
    if (isBorne || (record.opcode == FltOpcode::header && !record.name.empty()))
        item.name = QString::fromStdString(record.name);
}

/// Whether the name of an item can hold a text, by what its node bears. Its record isn't read for that.
bool SceneTreeModel::mayBeNamed(Item const& item, QString const& part) const
{
    std::string const borne = SoNodeName::wholeOf(*item.node);
    bool const isNamedByTheHeader = item.parent == nullptr;
    return borne.empty() || isNamedByTheHeader ||
           asInNodes(borne).contains(asInNodes(part.toStdString()), Qt::CaseInsensitive);
}

QString const& SceneTreeModel::ownNameOf(Item& item) const
{
    describe(item);
    return item.name;
}

QString SceneTreeModel::nameOf(Item& item) const
{
    QString const& name = ownNameOf(item);
    return name.isEmpty() ? typeNameOf(item.node) : name;
}

QString const& SceneTreeModel::kindOf(Item& item) const
{
    describe(item);
    return item.kind;
}

QVariant SceneTreeModel::data(QModelIndex const& index, int role) const
{
    Item* const item = itemOf(index);
    if (item == nullptr)
        return {};
    if (role == Qt::DisplayRole)
        return index.column() == nameColumn ? nameOf(*item) : kindOf(*item);
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

void SceneTreeModel::tellChecks(Item const& parent)
{
    if (!parent.children.empty())
        emit dataChanged(indexOfItem(parent.children.front().get()),
                         indexOfItem(parent.children.back().get()), {Qt::CheckStateRole});
}

void SceneTreeModel::showOnly(Item& item)
{
    for (Item* shown = &item; shown->parent != nullptr; shown = shown->parent) {
        for (auto const& other : childrenOf(*shown->parent))
            Visibility::setHidden(other->group(), other->steps.front(), other.get() != shown);
        tellChecks(*shown->parent);
    }
}

void SceneTreeModel::showOnly(QModelIndex const& index)
{
    if (Item* const item = itemOf(index))
        showOnly(*item);
}

void SceneTreeModel::showAll(Item& item)
{
    bool isChanged = false;
    for (auto const& child : item.children) {
        if (Visibility::isHidden(child->group(), child->steps.front())) {
            Visibility::setHidden(child->group(), child->steps.front(), false);
            isChanged = true;
        }
        showAll(*child);
    }
    if (isChanged)
        tellChecks(item);
}

void SceneTreeModel::showAll()
{
    if (root != nullptr)
        showAll(*root);
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
