#pragma once

#include "sdk/IEditor.h"

#include <QPointer>
#include <QString>

class BasicSetWidget;
class DocumentSetWidget;
class ModelAndParamtSetWidget;
class ModelObject;
class OnlineDebugWidget;
class OriginReturnSetWidget;
class PropertyEditorView;

/// The editor of one axis: pages as tabs on a view, wired to one another and to the host. It keeps no parameter; the
/// pages read and write the record. Made by MotionControlAxisFactory.
class MotionControlAxisEditor : public IEditor {
    Q_OBJECT

public:
    explicit MotionControlAxisEditor(QObject* parent = nullptr);
    /// Deletes the view with its pages, whoever has become the view's parent.
    ~MotionControlAxisEditor() override;

    QWidget* widget() override;
    /// The axis's name; empty when the record is gone.
    QString displayName() override;

    /// Builds the pages of the axis that the node path names: project name first, "AxisView" and the axis's id last.
    bool open(const QString& fileName, const QString& mimeType) override;
    bool load() override;
    bool reload() override;
    /// True also where the store refused the record: the record then stays modified and the project says why.
    bool save() override;
    bool saveAs() override;
    bool gotoLocation(const QString& location) override;
    EditorLocation locationInfo() override;
    /// Appends the enabled signal pins whose text begins the path.
    bool findReferences(const QString& path, QVector<FindResult>& results) override;
    /// Read-only: the content of the setting pages is disabled.
    void setReadOnly(bool readOnly) override;
    bool isReadOnly() override;
    /// Takes the focus to the view first, so that a pending edit is in the record when the answer is given.
    bool isModified() override;
    QString nodePath() override;
    QString typeKey() override;
    QByteArray saveState() override;
    bool restoreState(const QByteArray& state) override;
    void activated() override;
    IEditContext* currentContext() override;

    /// Brings the pages in step with a record that was changed from outside, after a change of controller. The online
    /// page is left alone.
    void refreshPages();
    /// Object name of the find control that had the focus last; empty when another editor is the current one.
    QString currentFindPosition() const;

public slots:
    void onTextChanged();
    /// Enables the setting pages' content off line and the online page's content on line.
    void onlineStatechanged(bool state);
    void onUpdateFindIndex();
    /// A project comparison has begun or ended; ignored on line.
    void onCmpStateChanged(bool state);
    void emitModificationChanged(ModelObject* obj, const QString& type, const QString& param);

private:
    bool beginBuild() const;
    void makePages();
    void addTabs();
    void connectPages();
    void followTransfer();
    bool endBuild();
    void followComparison();
    void scrollTo(const QWidget& page, const QWidget& control) const;

    bool m_readOnly = false;
    quint32 m_axisId = 0;
    QString m_title;
    QString m_nodePath;
    QString m_findPosition;
    QString m_projectName;
    // Whoever shows the view may delete it first, and the pages with it.
    QPointer<PropertyEditorView> m_view;
    QPointer<BasicSetWidget> m_basicPage;
    QPointer<DocumentSetWidget> m_unitPage;
    QPointer<ModelAndParamtSetWidget> m_motionPage;
    QPointer<OriginReturnSetWidget> m_homingPage;
    QPointer<OnlineDebugWidget> m_onlinePage;
};
