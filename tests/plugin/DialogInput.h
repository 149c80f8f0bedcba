#pragma once

class QDialog;
class QPushButton;
class QString;

/// Works dialogs as a user does, by keys and clicks.
namespace DialogInput {

/// The button of that text; the test ends where there is none.
QPushButton* button(const QDialog* dialog, const QString& text);
/// Replaces the text of the dialog's line edit by typing.
void type(const QDialog* dialog, const QString& text);
void click(const QDialog* dialog, const QString& buttonText);
/// Types a text and clicks OK.
void enter(const QDialog* dialog, const QString& text);

} // namespace DialogInput
