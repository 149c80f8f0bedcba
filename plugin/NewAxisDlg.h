#pragma once

#include <QDialog>
#include <QString>

class QLineEdit;
class QPushButton;

/// Asks for the name of a new axis. Proposes the first free one and accepts only names that are legal and free in the
/// project; changes nothing.
class NewAxisDlg : public QDialog {
    Q_OBJECT

public:
    /// Without an open project of that name there is no proposal and no name is accepted.
    explicit NewAxisDlg(
        const QString& projectName, QWidget* parent = nullptr, Qt::WindowFlags flags = Qt::WindowFlags());
    ~NewAxisDlg() override;

    /// The text of the field as it stands.
    QString axisName() const;

private slots:
    void onOkButtonClicked();
    void onTextChanged(const QString& name);

private:
    void buildForm();
    bool canJudge() const;
    QString freeName() const;
    bool isValid(const QString& name) const;
    bool isTaken(const QString& name) const;

    QLineEdit* m_nameEdit;
    QPushButton* m_okButton;
    QPushButton* m_cancelButton;
    QString m_projectName;
};
