#pragma once

#include "loader/FltScene.h"

#include <Inventor/SoPath.h>
#include <QAbstractItemModel>
#include <memory>
#include <optional>
#include <vector>

class SceneRecords;
class SoNode;

/// The scene as a tree: groups and shapes, each under the name of its record if it stands for one.
///
/// Shared parts of the scene stand in the tree once for each place, and a group may have very many children,
/// so items are made when they are looked at: a handful of each group's at first, and more when somebody
/// scrolls there or looks for them. Nodes that only set properties, and switches with a single child that the
/// conversion puts around the children of a switch record, have no items of their own.
class SceneTreeModel : public QAbstractItemModel
{
    Q_OBJECT

public:
    enum Column { nameColumn, kindColumn, columns };

    explicit SceneTreeModel(QObject* parent = nullptr);
    ~SceneTreeModel() override;

    /// Shows a scene. All of these stay the caller's, and have to live until the next call.
    /// @param root    null for an empty tree
    /// @param scene   knows the records of nodes below the root; null if nobody does
    /// @param records reads them; null only together with the scene
    void setScene(SoNode* root, FltScene const* scene, SceneRecords* records);

    SoNode* node(QModelIndex const& index) const;

    /// The record that a node stands for, or else that of the nearest one above it; none if nobody knows.
    std::optional<FltRecordPlace> record(QModelIndex const& index) const;

    /// The place in the scene, from its root on. Null for no index. Not yet referenced.
    SoPath* path(QModelIndex const& index) const;

    /// The deepest item that a path leads to.
    QModelIndex indexOf(SoPath const& path);

    /// The names from the root's child on, with a slash before each.
    QString address(QModelIndex const& index) const;

    /// The first item of an address; no index if there is none.
    QModelIndex indexOfAddress(QString const& address);

    /// The next item after @p from whose name holds a text, in letters of any case; the search goes on at the
    /// root once. No index if there is none, or if the tree is too large to be searched whole.
    QModelIndex findNext(QString const& text, QModelIndex const& from);

    /// Hides everything but an item, with what is below it and what it stands below.
    void showOnly(QModelIndex const& index);

    /// Shows again what was hidden.
    void showAll();

    /// How many rows there are by now, opened or not.
    int rowsMade() const { return made; }

    QModelIndex index(int row, int column, QModelIndex const& parent = {}) const override;
    QModelIndex parent(QModelIndex const& index) const override;
    int rowCount(QModelIndex const& parent = {}) const override;
    int columnCount(QModelIndex const& parent = {}) const override;
    bool hasChildren(QModelIndex const& parent = {}) const override;
    bool canFetchMore(QModelIndex const& parent) const override;
    void fetchMore(QModelIndex const& parent) override;
    QVariant data(QModelIndex const& index, int role) const override;
    bool setData(QModelIndex const& index, QVariant const& value, int role) override;
    Qt::ItemFlags flags(QModelIndex const& index) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

private:
    struct Item;

    Item* itemOf(QModelIndex const& index) const;
    QModelIndex indexOfItem(Item const* item) const;
    using Items = std::vector<std::unique_ptr<Item>>;
    Items& firstChildrenOf(Item& item) const;
    Items& childrenOf(Item& item);
    Items collect(Item& item, std::size_t most) const;
    void collectAt(Item& parent, SoNode* node, int index, std::vector<int>& steps, Items& items) const;
    void fetch(Item& item, std::size_t most);
    void showOnly(Item& item);
    void showAll(Item& item);
    void tellChecks(Item const& parent);
    bool hasItem(Item const& parent, SoNode const* node) const;
    Item* next(Item* item);
    std::optional<FltRecordPlace> placeOf(SoNode const* node) const;
    std::optional<FltRecordPlace> ownPlaceOf(Item const* parent, SoNode const* node) const;
    void describe(Item& item) const;
    QString const& ownNameOf(Item& item) const; ///< Empty if it has none.
    QString nameOf(Item& item) const;           ///< Else that of its type.
    QString const& kindOf(Item& item) const;
    bool mayBeNamed(Item const& item, QString const& part) const;

    std::unique_ptr<Item> root;
    mutable int made = 0;
    FltScene const* scene = nullptr;
    SceneRecords* records = nullptr;
};
