#include "view/RecordPanel.h"

#include "support/Numbers.h"
#include "view/FieldUnit.h"
#include "view/ShownText.h"

#include <Inventor/SbName.h>
#include <Inventor/SbString.h>
#include <Inventor/fields/SoMField.h>
#include <Inventor/lists/SoFieldList.h>
#include <Inventor/nodes/SoNode.h>
#include <QLabel>
#include <QLineEdit>
#include <QTreeWidget>
#include <QVBoxLayout>
#include <algorithm>
#include <cstdint>
#include <nlohmann/json.hpp>
#include <string>

namespace
{

using Json = nlohmann::ordered_json;

constexpr int longestList = 1000;      ///< Elements of a list that get lines of their own.
constexpr std::size_t longestLine = 8; ///< Elements of a list that stand in one line.
constexpr int shownValues = 16;        ///< Of a field of a node that has many.
constexpr int longestText = 2000;

QString shortened(QString text)
{
    if (text.size() > longestText)
        text = text.left(longestText) + "…";
    return text;
}

QString counted(std::size_t count, char const* one, char const* several)
{
    return QString::fromStdString(Numbers::counted(count, one, several));
}

bool fitsInLine(Json const& list)
{
    return list.size() <= longestLine && std::none_of(list.begin(), list.end(), [](Json const& element) {
               return element.is_structured();
           });
}

QString textOf(Json const& value)
{
    if (value.is_string())
        return shortened(QString::fromStdString(value.get<std::string>()));
    if (value.is_boolean())
        return value.get<bool>() ? QStringLiteral("yes") : QStringLiteral("no");
    if (!value.is_array())
        return QString::fromStdString(value.dump(-1, ' ', false, Json::error_handler_t::replace));
    QStringList elements;
    for (Json const& element : value)
        elements << textOf(element);
    return elements.join(", ");
}

QTreeWidgetItem* addLine(QTreeWidgetItem* parent, QString const& name, QString const& text)
{
    auto* const item = new QTreeWidgetItem(parent, {name, text});
    item->setToolTip(0, ShownText::toolTip(name));
    item->setToolTip(1, ShownText::toolTip(text));
    return item;
}

/// What a number counts in, of a field of fractions or of several.
QString unitOf(QString const& name, Json const& value, QString const& lengthUnit)
{
    bool const isNumber =
        value.is_number_float() || (value.is_array() && !value.empty() && value.front().is_number_float());
    return isNumber ? FieldUnit::of(name, lengthUnit) : QString();
}

void addValue(QTreeWidgetItem* parent, QString const& name, Json const& value, QString const& unit);

void addElements(QTreeWidgetItem* parent, Json const& list, QString const& unit)
{
    int const count = static_cast<int>(std::min(list.size(), std::size_t{longestList}));
    for (int i = 0; i < count; ++i)
        addValue(parent, QString::number(i), list[static_cast<std::size_t>(i)], unit);
    if (static_cast<std::size_t>(count) < list.size())
        addLine(parent, "…",
                QString::fromStdString(Numbers::grouped(list.size() - static_cast<std::size_t>(count))) +
                    " more");
}

void addValue(QTreeWidgetItem* parent, QString const& name, Json const& value, QString const& unit)
{
    if (value.is_object()) {
        auto const word = value.find("word");
        QTreeWidgetItem* const item = addLine(
            parent, name, word != value.end() ? "0x" + QString::number(word->get<std::uint32_t>(), 16) : "");
        for (auto const& [key, element] : value.items())
            if (key != "word")
                addValue(item, QString::fromStdString(key), element, unit);
    } else if (value.is_array() && !fitsInLine(value)) {
        addElements(addLine(parent, name, counted(value.size(), "entry", "entries")), value, unit);
    } else {
        addLine(parent, name, textOf(value) + unitOf(name, value, unit));
    }
}

QString textOf(SoField& field)
{
    SbString text;
    auto* const many = field.isOfType(SoMField::getClassTypeId()) ? static_cast<SoMField*>(&field) : nullptr;
    if (many == nullptr || many->getNum() <= shownValues) {
        field.get(text);
        return shortened(QString::fromUtf8(text.getString()).simplified());
    }
    QStringList values;
    for (int i = 0; i < shownValues; ++i) {
        many->get1(i, text);
        values << QString::fromUtf8(text.getString());
    }
    return counted(static_cast<std::size_t>(many->getNum()), "value", "values") + ": " + values.join(", ") +
           ", …";
}

/// Hides what doesn't hold a text. @return whether anything of the item is left
bool filterItem(QTreeWidgetItem& item, QString const& text)
{
    bool isLeft = text.isEmpty() || item.text(0).contains(text, Qt::CaseInsensitive) ||
                  item.text(1).contains(text, Qt::CaseInsensitive);
    for (int i = 0; i < item.childCount(); ++i)
        isLeft = filterItem(*item.child(i), isLeft ? QString() : text) || isLeft;
    item.setHidden(!isLeft);
    return isLeft;
}

} // namespace

RecordPanel::RecordPanel(QWidget* parent)
    : QWidget(parent), search(new QLineEdit), summary(ShownText::label()), noteLine(ShownText::label()),
      tree(new QTreeWidget)
{
    auto* const layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(summary);
    layout->addWidget(search);
    layout->addWidget(noteLine);
    summary->setObjectName("summary");
    summary->setWordWrap(true);
    summary->setMargin(4);
    summary->hide();
    layout->addWidget(tree);
    noteLine->setObjectName("note");
    noteLine->setWordWrap(true);
    noteLine->setMargin(4);
    noteLine->hide();
    search->setPlaceholderText(tr("Filter the fields"));
    search->setClearButtonEnabled(true);
    tree->setHeaderLabels({tr("Field"), tr("Value")});
    tree->setAlternatingRowColors(true);
    tree->setTextElideMode(Qt::ElideMiddle); // names of fields begin alike, and end alike
    tree->setAccessibleName(tr("Fields"));
    tree->setObjectName("fields");
    connect(search, &QLineEdit::textChanged, this, &RecordPanel::filter);
}

void RecordPanel::show(std::vector<Json> const& records, SoNode const* node, QString const& note,
                       QString const& unit)
{
    tree->setUpdatesEnabled(false);
    tree->clear();
    setSummary({});
    noteLine->setText(note);
    noteLine->setVisible(!note.isEmpty());
    for (Json const& record : records)
        addRecord(record, unit);
    if (node != nullptr)
        addNode(*node);
    filter(search->text());
    fitNames();
    tree->setUpdatesEnabled(true);
}

/// Gives names the room that they need, and leaves a third for the values.
void RecordPanel::fitNames()
{
    tree->resizeColumnToContents(0);
    tree->setColumnWidth(0, std::min(tree->columnWidth(0), tree->viewport()->width() * 2 / 3));
}

void RecordPanel::resizeEvent(QResizeEvent* event)
{
    QWidget::resizeEvent(event);
    fitNames();
}

void RecordPanel::setSummary(QString const& text)
{
    summary->setText(text);
    summary->setVisible(!text.isEmpty());
}

void RecordPanel::addRecord(Json const& record, QString const& unit)
{
    // A record that is too broken to be read has no class.
    auto const member = [&record](char const* name) {
        auto const found = record.find(name);
        return found != record.end() ? textOf(*found) : QString();
    };
    auto* const item =
        new QTreeWidgetItem(tree, {member("class"), "opcode " + member("opcode") + ", " + member("length") +
                                                        " bytes at " + member("offset")});
    if (auto const error = record.find("error"); error != record.end())
        addLine(item, tr("error"), textOf(*error));
    if (auto const fields = record.find("fields"); fields != record.end())
        for (auto const& [name, value] : fields->items())
            addValue(item, QString::fromStdString(name), value, unit);
    item->setExpanded(true);
}

void RecordPanel::addNode(SoNode const& node)
{
    auto* const item = new QTreeWidgetItem(
        tree, {QString::fromUtf8(node.getTypeId().getName().getString()), tr("node of the scene")});
    SoFieldList fields;
    node.getFields(fields);
    for (int i = 0; i < fields.getLength(); ++i) {
        SbName name;
        node.getFieldName(fields[i], name);
        addLine(item, QString::fromUtf8(name.getString()), textOf(*fields[i]));
    }
    item->setExpanded(true);
}

void RecordPanel::filter(QString const& text)
{
    for (int i = 0; i < tree->topLevelItemCount(); ++i)
        filterItem(*tree->topLevelItem(i), text);
}
