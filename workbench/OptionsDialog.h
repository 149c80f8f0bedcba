#pragma once

#include <QDialog>

#include <memory>
#include <vector>

class IOption;
class IOptionFactory;

namespace Ui {
class OptionsDialog;
}

/// The options, a page for each factory. OK and Apply take the pages' values over.
class OptionsDialog : public QDialog {
    Q_OBJECT

public:
    explicit OptionsDialog(QWidget* parent = nullptr);
    ~OptionsDialog() override;

    void addPage(IOptionFactory& factory);
    /// Brings the page of that type to the front; an unknown type changes nothing.
    void showPage(const QString& mimeType);

signals:
    /// The values of the page of that type have been taken over.
    void applied(QString mimeType);

protected:
    void changeEvent(QEvent* event) override;

private:
    struct Page {
        IOptionFactory* factory;
        std::unique_ptr<IOption> option;
    };

    void apply();
    void retranslate();

    std::unique_ptr<Ui::OptionsDialog> m_ui;
    std::vector<Page> m_pages;
};
