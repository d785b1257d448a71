#include "gui/mainform/uGoToDialog.h"

#include <QDialog>
#include <QDialogButtonBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>

#include "gui/common/uBoxes.h"
#include "gui/common/uQtText.h"
#include "shell/uGoTo.h"

void AskAndGoTo(QWidget& window, TShownMission& mission, IMissionViews& views) {
  QDialog dialog(&window);
  dialog.setObjectName("dlgGoTo");
  dialog.setWindowTitle(QObject::tr("Go to"));
  auto* label = new QLabel(QObject::tr("&Event ID, or time"), &dialog);
  auto* edit = Named(new QLineEdit(&dialog), "edtGoTo", QObject::tr("Event ID, or time"),
                     QObject::tr("12 is the event with that ID; 14:30, 2024-05-31 or both are a time"));
  edit->setPlaceholderText(QObject::tr("12   or   14:30:00   or   date and time"));
  edit->setMinimumWidth(edit->fontMetrics().averageCharWidth() * 45);
  label->setBuddy(edit);
  auto* problem = MakeSentence("lblGoToProblem", &dialog);
  auto* buttons = new QDialogButtonBox(QDialogButtonBox::Cancel, &dialog);
  auto* go = buttons->addButton(QObject::tr("&Go"), QDialogButtonBox::AcceptRole);
  go->setDefault(true);
  QObject::connect(buttons, &QDialogButtonBox::rejected, &dialog, &QDialog::reject);
  QObject::connect(buttons, &QDialogButtonBox::accepted, &dialog, [&] {
    const QString why = QtText(GoTo(mission, Utf8(edit->text()), views));
    if (why.isEmpty()) return dialog.accept();
    problem->setText(why);
    edit->selectAll();
    edit->setFocus();
  });
  QObject::connect(edit, &QLineEdit::textEdited, problem, &QLabel::clear);
  MakeColumn(&dialog, {label, edit, problem, buttons});
  problem->setMinimumHeight(2 * problem->fontMetrics().height());  // the dialog keeps its size
  dialog.exec();
}
