#include "bench/BareEditor.h"

#include "bench/Measure.h"
#include "host/components/PropertyEditorView.h"

#include "ui_BasicSetWidget.h"
#include "ui_DocumentSetWidget.h"
#include "ui_ModelAndParamtSetWidget.h"
#include "ui_OnlineDebugWidget.h"
#include "ui_OriginReturnSetWidget.h"

#include <QDoubleValidator>
#include <QHeaderView>
#include <QStandardItemModel>

namespace {

using Filling = EditorSnapshot::Filling;

const std::array<const char*, 5> tabTitles{ "basic setting", "document setting", "model and param setting",
    "origin return setting", "online debug setting" };

void addComboBox(QVector<Filling>& fillings, const QComboBox* box, const QComboBox* bare)
{
    QStringList entries;
    for (int index = 0; index < box->count(); ++index)
        entries.append(box->itemText(index));
    const int current = box->currentIndex();
    if (entries.size() != bare->count() || current != bare->currentIndex())
        fillings.append([=](QWidget& control) {
            auto& target = static_cast<QComboBox&>(control);
            target.clear();
            target.insertItems(0, entries);
            target.setCurrentIndex(current);
        });
}

void addLineEdit(QVector<Filling>& fillings, const QLineEdit* edit)
{
    const QString text = edit->text();
    const bool validated = edit->validator() != nullptr;
    fillings.append([=](QWidget& control) {
        auto& target = static_cast<QLineEdit&>(control);
        if (validated)
            target.setValidator(new QDoubleValidator(&target));
        target.setText(text);
    });
}

void addLabel(QVector<Filling>& fillings, const QLabel* label)
{
    const QPixmap* picture = label->pixmap();
    const QString text = label->text();
    if (!picture)
        return fillings.append([text](QWidget& control) { static_cast<QLabel&>(control).setText(text); });
    const QPixmap pixmap = *picture;
    fillings.append([pixmap](QWidget& control) {
        static_cast<QLabel&>(control).setScaledContents(true);
        static_cast<QLabel&>(control).setPixmap(pixmap);
    });
}

QStringList headersOf(const QAbstractItemModel& model, Qt::Orientation orientation)
{
    const int sections = orientation == Qt::Horizontal ? model.columnCount() : model.rowCount();
    QStringList headers;
    for (int section = 0; section < sections; ++section)
        headers.append(model.headerData(section, orientation).toString());
    return headers;
}

void fillTable(QTableView& table, const QVector<QStringList>& headers, const QVector<QMap<int, QVariant>>& cells)
{
    const int columns = headers.at(0).size();
    auto* model = new QStandardItemModel(headers.at(1).size(), columns, &table);
    model->setHorizontalHeaderLabels(headers.at(0));
    model->setVerticalHeaderLabels(headers.at(1));
    for (int cell = 0; cell < cells.size(); ++cell)
        model->setItemData(model->index(cell / columns, cell % columns), cells.at(cell));
    table.setModel(model);
    table.horizontalHeader()->setSectionResizeMode(QHeaderView::Stretch);
    table.verticalHeader()->setSectionResizeMode(QHeaderView::Stretch);
    table.setEditTriggers(QAbstractItemView::NoEditTriggers);
}

void addTable(QVector<Filling>& fillings, const QTableView* table)
{
    const QAbstractItemModel* model = table->model();
    if (!model)
        return;
    QVector<QMap<int, QVariant>> cells;
    for (int row = 0; row < model->rowCount(); ++row) {
        for (int column = 0; column < model->columnCount(); ++column)
            cells.append(model->itemData(model->index(row, column)));
    }
    const QVector<QStringList> headers{ headersOf(*model, Qt::Horizontal), headersOf(*model, Qt::Vertical) };
    fillings.append([=](QWidget& control) { fillTable(static_cast<QTableView&>(control), headers, cells); });
}

void addState(QVector<Filling>& fillings, const QWidget* control, const QWidget* bare)
{
    const bool hidden = control->isHidden();
    const bool enabled = control->testAttribute(Qt::WA_ForceDisabled) == false;
    if (hidden != bare->isHidden())
        fillings.append([hidden](QWidget& target) { target.setVisible(!hidden); });
    if (enabled == bare->testAttribute(Qt::WA_ForceDisabled))
        fillings.append([enabled](QWidget& target) { target.setEnabled(enabled); });
}

/// What makes the bare control look like the one of the editor.
QVector<Filling> fillingsOf(const QWidget* control, const QWidget* bare)
{
    QVector<Filling> fillings;
    if (const auto* box = qobject_cast<const QComboBox*>(control))
        addComboBox(fillings, box, static_cast<const QComboBox*>(bare));
    else if (const auto* edit = qobject_cast<const QLineEdit*>(control))
        addLineEdit(fillings, edit);
    else if (const auto* label = qobject_cast<const QLabel*>(control))
        addLabel(fillings, label);
    else if (const auto* table = qobject_cast<const QTableView*>(control))
        addTable(fillings, table);
    else if (const auto* button = qobject_cast<const QAbstractButton*>(control)) {
        if (button->isCheckable())
            fillings.append([checked = button->isChecked()](
                                QWidget& target) { static_cast<QAbstractButton&>(target).setChecked(checked); });
    }
    addState(fillings, control, bare);
    return fillings;
}

} // namespace

EditorSnapshot::EditorSnapshot(const PropertyEditorView& view)
{
    for (std::size_t number = 0; number < pages.size(); ++number) {
        QWidget bare;
        BareEditor::setUpForm(static_cast<int>(number), bare);
        const auto* page = view.findChild<QWidget*>(bare.objectName());
        shown[number] = view.isTabVisible(QString::fromLatin1(tabTitles[number]));
        const QList<QWidget*> children = bare.findChildren<QWidget*>();
        for (int child = 0; child < children.size(); ++child) {
            const QString name = children.at(child)->objectName();
            const auto* control
                = name.startsWith(QLatin1String("qt_")) || name.isEmpty() ? nullptr : page->findChild<QWidget*>(name);
            if (!control)
                continue;
            const QVector<Filling> fillings = fillingsOf(control, children.at(child));
            for (const Filling& filling : fillings)
                pages[number].append({ child, filling });
        }
    }
}

BareEditor::BareEditor() = default;
BareEditor::~BareEditor() = default;

void BareEditor::setUpForm(int page, QWidget& widget)
{
    switch (page) {
    case 0:
        return Ui::BasicSetWidget().setupUi(&widget);
    case 1:
        return Ui::DocumentSetWidget().setupUi(&widget);
    case 2:
        return Ui::ModelAndParamtSetWidget().setupUi(&widget);
    case 3:
        return Ui::OriginReturnSetWidget().setupUi(&widget);
    default:
        return Ui::OnlineDebugWidget().setupUi(&widget);
    }
}

double BareEditor::setUp()
{
    return Measure::once([this] {
        m_view = std::make_unique<PropertyEditorView>();
        for (std::size_t page = 0; page < m_pages.size(); ++page) {
            m_pages[page] = new QWidget(m_view.get());
            setUpForm(static_cast<int>(page), *m_pages[page]);
        }
        for (QWidget* page : m_pages)
            m_view->addTab(page, page->objectName());
    });
}

void BareEditor::lookUp()
{
    for (std::size_t page = 0; page < m_pages.size(); ++page)
        m_children[page] = m_pages[page]->findChildren<QWidget*>();
}

double BareEditor::fill(const EditorSnapshot& snapshot)
{
    return Measure::once([&] {
        for (std::size_t page = 0; page < m_pages.size(); ++page) {
            for (const EditorSnapshot::Step& step : snapshot.pages[page])
                step.fill(*m_children[page].at(step.child));
            m_view->setTabVisible(m_pages[page]->objectName(), snapshot.shown[page]);
        }
    });
}

void BareEditor::clear()
{
    m_view.reset();
}

QWidget* BareEditor::view() const
{
    return m_view.get();
}
