#pragma once

#include <QWidget>
#include <nlohmann/json_fwd.hpp>
#include <vector>

class QLabel;
class QLineEdit;
class QTreeWidget;
class QTreeWidgetItem;
class SoNode;

/// All fields of the selected record and of those that belong to it, and of the scene's node.
class RecordPanel : public QWidget
{
    Q_OBJECT

public:
    explicit RecordPanel(QWidget* parent = nullptr);

    /// @param records as SceneRecords::fieldsOf() gives them
    /// @param node    null for none
    /// @param note    what is to be known besides; empty for nothing
    /// @param unit    of lengths in the records: "feet"; empty if it isn't known
    void show(std::vector<nlohmann::ordered_json> const& records, SoNode const* node,
              QString const& note = {}, QString const& unit = {});

    /// Says above the fields what the selected part is made of.
    void setSummary(QString const& text);

protected:
    void resizeEvent(QResizeEvent* event) override;

private:
    void fitNames();
    void addRecord(nlohmann::ordered_json const& record, QString const& unit);
    void addNode(SoNode const& node);
    void filter(QString const& text);

    QLineEdit* search;
    QLabel* summary;
    QLabel* noteLine;
    QTreeWidget* tree;
};
