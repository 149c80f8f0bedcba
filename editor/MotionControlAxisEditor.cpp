// The host's services are connected by the signatures' texts, which are the contract with them.
// clazy:excludeall=old-style-connect

#include "editor/MotionControlAxisEditor.h"

#include "axisdata/AxisConstants.h"
#include "axisdata/AxisRecord.h"
#include "editor/AxisNodePath.h"
#include "editor/BasicSetWidget.h"
#include "editor/DocumentSetWidget.h"
#include "host/components/PropertyEditorView.h"
#include "host/languagecore/SplitPath.h"
#include "online/OnlineDebugWidget.h"
#include "pages/ModelAndParamtSetWidget.h"
#include "pages/OriginReturnSetWidget.h"
#include "sdk/IComparatorMan.h"
#include "sdk/IConfiguration.h"
#include "sdk/IEditorManager.h"
#include "sdk/ServiceKeys.h"
#include "sdk/ServiceLocator.h"
#include "sdk/Transfer.h"

#include <QLineEdit>
#include <QScrollArea>
#include <QScrollBar>

namespace {

bool hasTree()
{
    return Solution::service(Solution::ServiceKey::view()) != nullptr;
}

Transfer* transferService()
{
    return Solution::serviceAs<Transfer>(Solution::ServiceKey::transfer());
}

/// The frames stay enabled, so that a disabled page can still be scrolled and read.
void enableContent(const QWidget* page, bool enabled)
{
    if (!page)
        return;
    const QList<QScrollArea*> areas = page->findChildren<QScrollArea*>();
    for (const QScrollArea* area : areas) {
        if (QWidget* content = area->widget())
            content->setEnabled(enabled);
    }
}

struct PinUse {
    QString enableKey;
    QString pinKey;
    const char* label;
    QString control;
};

/// The controls of the first two rows stand crossed over, which is kept: a use at one limit leads to the line edit of
/// the other.
const PinUse pinUses[] = {
    { QStringLiteral("NegsLimitEnable"), QStringLiteral("NegLimitPin"),
        QT_TRANSLATE_NOOP("MotionControlAxisEditor", "Negative limit:"), QStringLiteral("lineEditPos") },
    { QStringLiteral("PosLimitEnable"), QStringLiteral("PosLimitPin"),
        QT_TRANSLATE_NOOP("MotionControlAxisEditor", "Positive limit:"), QStringLiteral("lineEditNeg") },
    { QStringLiteral("OrgSignalEnable"), QStringLiteral("OrgSignalPin"),
        QT_TRANSLATE_NOOP("MotionControlAxisEditor", "Origin signal:"), QStringLiteral("lineEditOrg") },
};

} // namespace

MotionControlAxisEditor::MotionControlAxisEditor(QObject* parent) : IEditor(parent), m_view(new PropertyEditorView) { }

MotionControlAxisEditor::~MotionControlAxisEditor()
{
    delete m_view;
}

QWidget* MotionControlAxisEditor::widget()
{
    return m_view;
}

QString MotionControlAxisEditor::displayName()
{
    const AxisRecord record(m_projectName, m_axisId);
    if (!record.axes().project())
        return m_title;
    return record ? record->name() : QString();
}

bool MotionControlAxisEditor::open(const QString& fileName, const QString& mimeType)
{
    const AxisNodePath node = AxisNodePath::parse(fileName, mimeType);
    m_nodePath = fileName;
    m_projectName = node.projectName;
    if (!m_view || !Solution::application())
        return false;
    m_axisId = node.axisId;
    if (!beginBuild())
        return false;
    makePages();
    addTabs();
    m_view->blockUndoRedo(true);
    connectPages();
    // The refresh in the page's constructor found no tabs to show or hide.
    m_basicPage->refreshFromModel();
    followTransfer();
    if (!endBuild())
        return false;
    followComparison();
    return true;
}

bool MotionControlAxisEditor::beginBuild() const
{
    const AxisRecord record(m_projectName, m_axisId);
    if (!hasTree() || !record)
        return false;
    record->pageBuild = true;
    return true;
}

void MotionControlAxisEditor::makePages()
{
    m_basicPage = new BasicSetWidget(m_projectName, m_axisId, m_view);
    m_unitPage = new DocumentSetWidget(m_projectName, m_axisId, m_view);
    m_motionPage = new ModelAndParamtSetWidget(m_projectName, m_axisId, m_view);
    m_homingPage = new OriginReturnSetWidget(m_projectName, m_axisId, m_view);
    m_onlinePage = new OnlineDebugWidget(m_projectName, m_axisId, m_view);
}

void MotionControlAxisEditor::addTabs()
{
    m_view->addTab(m_basicPage, tr("basic setting"));
    m_view->addTab(m_unitPage, tr("document setting"));
    m_view->addTab(m_motionPage, tr("model and param setting"));
    m_view->addTab(m_homingPage, tr("origin return setting"));
    m_view->addTab(m_onlinePage, tr("online debug setting"));
}

void MotionControlAxisEditor::connectPages()
{
    connect(m_basicPage, &BasicSetWidget::axisTypeChanged, m_unitPage, &DocumentSetWidget::axisTypeChanged);
    connect(m_basicPage, &BasicSetWidget::axisTypeChanged, m_motionPage, &ModelAndParamtSetWidget::axisTypeChanged);
    connect(m_basicPage, &BasicSetWidget::axisTypeChanged, m_homingPage, &OriginReturnSetWidget::updateWidget);
    connect(m_basicPage, &BasicSetWidget::axisInputDeviceChanged, m_motionPage, &ModelAndParamtSetWidget::updateWidget);
    connect(
        m_basicPage, &BasicSetWidget::axisOutputDeviceChanged, m_motionPage, &ModelAndParamtSetWidget::updateWidget);
    connect(m_homingPage, &OriginReturnSetWidget::updateFindIndex, this, &MotionControlAxisEditor::onUpdateFindIndex);
}

void MotionControlAxisEditor::followTransfer()
{
    Transfer* transfer = transferService();
    if (!transfer)
        return;
    onlineStatechanged(transfer->isOnline());
    m_onlinePage->onlineStatechanged(transfer->isOnline());
    connect(transfer, SIGNAL(onlineState(bool)), this, SLOT(onlineStatechanged(bool)), Qt::UniqueConnection);
    connect(transfer, SIGNAL(onlineState(bool)), m_onlinePage, SLOT(onlineStatechanged(bool)), Qt::UniqueConnection);
}

bool MotionControlAxisEditor::endBuild()
{
    const AxisRecord record(m_projectName, m_axisId);
    if (!hasTree() || !record)
        return false;
    record->pageBuild = false;
    record->save();
    connect(record.table(), &ModelObject::dataChanged, this, &MotionControlAxisEditor::emitModificationChanged,
        Qt::UniqueConnection);
    return true;
}

void MotionControlAxisEditor::followComparison()
{
    if (auto* manager = Solution::serviceAs<IComparatorMan>(Solution::ServiceKey::comparatorManager()))
        connect(manager, SIGNAL(cmpStateChanged(bool)), this, SLOT(onCmpStateChanged(bool)));
    const auto* cookies = Solution::serviceAs<IConfiguration>(Solution::ServiceKey::cookies());
    if (cookies && cookies->value(Solution::ConfigKey::projectComparison(), false).toBool())
        onCmpStateChanged(true);
}

bool MotionControlAxisEditor::load()
{
    const AxisRecord record(m_projectName, m_axisId);
    return record && record->load();
}

bool MotionControlAxisEditor::reload()
{
    return load();
}

bool MotionControlAxisEditor::save()
{
    const AxisRecord record(m_projectName, m_axisId);
    if (!record)
        return false;
    record->save();
    return true;
}

bool MotionControlAxisEditor::saveAs()
{
    return true;
}

bool MotionControlAxisEditor::gotoLocation(const QString& location)
{
    if (location.isEmpty())
        return false;
    if (!m_view)
        return true;
    const QStringList sections = location.split(QLatin1Char('.'));
    auto* page = m_view->findChild<QWidget*>(sections.first());
    if (!page)
        return true;
    m_view->setCurrentWidget(page);
    const QList<QLineEdit*> edits = page->findChildren<QLineEdit*>();
    for (QLineEdit* other : edits)
        other->deselect();
    auto* edit = sections.size() > 1 ? page->findChild<QLineEdit*>(sections.last()) : nullptr;
    if (!edit)
        return true;
    edit->setFocus(Qt::OtherFocusReason);
    edit->selectAll();
    scrollTo(*page, *edit);
    return true;
}

void MotionControlAxisEditor::scrollTo(const QWidget& page, const QWidget& control) const
{
    const auto* area = page.findChild<QScrollArea*>();
    const QWidget* content = area ? area->widget() : nullptr;
    if (!content || !content->isAncestorOf(&control))
        return;
    // The control's own position is counted twice for controls that lie directly in the content; the
    // view then shows a little of what follows them.
    const int y = control.mapTo(content, control.pos()).y();
    const int target = y + control.height() + area->height() / 2 - area->height();
    area->verticalScrollBar()->setValue(target < 0 ? 0 : qMin(target, content->height() - area->height()));
}

EditorLocation MotionControlAxisEditor::locationInfo()
{
    return {};
}

bool MotionControlAxisEditor::findReferences(const QString& path, QVector<FindResult>& results)
{
    const AxisRecord record(m_projectName, m_axisId);
    if (!hasTree() || !record)
        return false;
    const QString page = m_homingPage ? m_homingPage->objectName() : QString();
    for (const PinUse& use : pinUses) {
        const QString pin = record.text(use.pinKey);
        if (record.text(use.enableKey).compare(AxisTrue, Qt::CaseInsensitive) != 0
            || !ac::SplitPath::isPrefixPath(pin.toStdString(), path.toStdString()))
            continue;
        FindResult result;
        result.typeKey = AxisViewKey;
        result.nodePath = m_nodePath;
        result.objectName = record->name();
        result.text = pin;
        result.matchedText = pin;
        result.dataType = QStringLiteral("BOOL");
        result.label = tr(use.label) + pin;
        result.location = page + QLatin1Char('.') + use.control;
        result.kind = 1;
        results.append(result);
    }
    return true;
}

void MotionControlAxisEditor::setReadOnly(bool readOnly)
{
    if (readOnly == m_readOnly)
        return;
    m_readOnly = readOnly;
    onlineStatechanged(readOnly);
}

bool MotionControlAxisEditor::isReadOnly()
{
    return m_readOnly;
}

bool MotionControlAxisEditor::isModified()
{
    if (m_view)
        m_view->setFocus(Qt::OtherFocusReason);
    const AxisRecord record(m_projectName, m_axisId);
    return record && record->modified;
}

QString MotionControlAxisEditor::nodePath()
{
    return m_nodePath;
}

QString MotionControlAxisEditor::typeKey()
{
    return AxisViewKey;
}

QByteArray MotionControlAxisEditor::saveState()
{
    return {};
}

bool MotionControlAxisEditor::restoreState(const QByteArray& state)
{
    Q_UNUSED(state)
    return true;
}

void MotionControlAxisEditor::activated() { }

IEditContext* MotionControlAxisEditor::currentContext()
{
    return m_view ? m_view->getCurrentContext() : nullptr;
}

void MotionControlAxisEditor::refreshPages()
{
    if (m_basicPage)
        m_basicPage->refreshFromModel();
    if (m_unitPage)
        m_unitPage->refreshFromModel();
    if (m_motionPage)
        m_motionPage->updateWidget();
    if (m_homingPage)
        m_homingPage->updateWidget();
}

QString MotionControlAxisEditor::currentFindPosition() const
{
    IEditorManager* manager = Solution::editorManager();
    const IEditor* current = manager ? manager->currentEditor() : nullptr;
    return current && current != this ? QString() : m_findPosition;
}

void MotionControlAxisEditor::onTextChanged()
{
    IEditorManager* manager = Solution::editorManager();
    if (manager && manager->currentEditor() == this)
        manager->updateCurrentEditor();
}

void MotionControlAxisEditor::onlineStatechanged(bool state)
{
    enableContent(m_basicPage, !state);
    enableContent(m_unitPage, !state);
    enableContent(m_motionPage, !state);
    enableContent(m_homingPage, !state);
    enableContent(m_onlinePage, state);
}

void MotionControlAxisEditor::onUpdateFindIndex()
{
    m_findPosition = m_homingPage ? m_homingPage->focusedPinViewInfo() : QString();
    if (IEditorManager* manager = Solution::editorManager())
        manager->sendEditorMessage(this, QStringLiteral("UPDATE_FIND_INDEX"), m_findPosition);
}

void MotionControlAxisEditor::onCmpStateChanged(bool state)
{
    Transfer* transfer = transferService();
    if (transfer && transfer->isOnline())
        return;
    setReadOnly(state);
}

void MotionControlAxisEditor::emitModificationChanged(ModelObject* obj, const QString& type, const QString& param)
{
    Q_UNUSED(obj)
    Q_UNUSED(type)
    Q_UNUSED(param)
    emit modificationChanged(true);
}
