#include "gui/mainform/uNoteDialogs.h"

#include <QComboBox>
#include <QDialog>
#include <QDialogButtonBox>
#include <QFormLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPlainTextEdit>
#include <QPushButton>
#include <utility>
#include <vector>

#include "gui/common/uBoxes.h"
#include "gui/common/uQtText.h"
#include "gui/mainform/KorvexMainForm.h"
#include "gui/mainform/uCommandTable.h"
#include "shell/uNoteCommands.h"

namespace {

constexpr int kMaxNote = 10000;  // characters
constexpr int kMaxWord = 200;    // of an author, or of all tags

// Enter accepts the dialog, Shift+Enter begins a line.
class TNoteText final : public QPlainTextEdit {
 public:
  using QPlainTextEdit::QPlainTextEdit;

 protected:
  void keyPressEvent(QKeyEvent* event) override {
    const bool enter = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    if (enter && (event->modifiers() & Qt::ShiftModifier) == 0) {
      event->ignore();
    } else {
      QPlainTextEdit::keyPressEvent(event);
    }
  }
};

// As the last note had it, at first the user's name on this computer.
QString& LastAuthor() {
  static QString author = qEnvironmentVariable("USER", qEnvironmentVariable("USERNAME"));
  return author;
}

class TNoteDialog final : public QDialog {
 public:
  // The places to choose from, the first of which is proposed; each is a note that is filled in.
  TNoteDialog(const QString& title, std::vector<std::pair<QString, TNote>> places, QWidget* parent)
      : QDialog(parent), FPlaces(std::move(places)) {
    setObjectName("dlgNote");
    setWindowTitle(title);
    auto* form = new QFormLayout;
    for (const auto& [caption, note] : FPlaces) FPlace->addItem(caption);
    FPlace->setEnabled(FPlaces.size() > 1);
    form->addRow(tr("&On"), FPlace);
    const TNote& note = FPlaces.front().second;
    FText->setTabChangesFocus(true);
    FText->setPlainText(QtText(note.text));
    FText->setMinimumWidth(FText->fontMetrics().averageCharWidth() * 50);
    FText->setFixedHeight(FText->fontMetrics().lineSpacing() * 5);
    form->addRow(tr("&Text"), FText);
    FAuthor->setMaxLength(kMaxWord);
    FAuthor->setText(note.id.empty() ? LastAuthor() : QtText(note.author));
    form->addRow(tr("&Author"), FAuthor);
    FTags->setMaxLength(kMaxWord);
    FTags->setPlaceholderText(tr("separated by commas"));
    QStringList tags;
    for (const std::string& tag : note.tags) tags << QtText(tag);
    FTags->setText(tags.join(", "));
    form->addRow(tr("Ta&gs"), FTags);
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);
    QPushButton* ok = buttons->button(QDialogButtonBox::Ok);
    const auto update = [this, ok] { ok->setEnabled(!FText->toPlainText().trimmed().isEmpty()); };
    connect(FText, &QPlainTextEdit::textChanged, this, update);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    update();
    MakeColumn(this, {form, buttons});
    FText->setFocus();
  }

  [[nodiscard]] TNote Typed() const {
    TNote note = FPlaces[static_cast<std::size_t>(FPlace->currentIndex())].second;
    note.text = Utf8(FText->toPlainText().trimmed().left(kMaxNote));
    note.author = Utf8(FAuthor->text().trimmed());
    LastAuthor() = FAuthor->text().trimmed();
    note.tags.clear();
    for (const QString& tag : FTags->text().split(',', Qt::SkipEmptyParts)) {
      if (!tag.trimmed().isEmpty()) note.tags.push_back(Utf8(tag.trimmed()));
    }
    return note;
  }

 private:
  std::vector<std::pair<QString, TNote>> FPlaces;
  QComboBox* FPlace = Named(new QComboBox(this), "cmbNotePlace");
  TNoteText* FText =
      Named(new TNoteText(this), "edtNoteText", {}, tr("Enter keeps the note, Shift+Enter begins a line"));
  QLineEdit* FAuthor = Named(new QLineEdit(this), "edtNoteAuthor");
  QLineEdit* FTags = Named(new QLineEdit(this), "edtNoteTags");
};

QString Capitalized(QString text) {
  if (!text.isEmpty()) text[0] = text[0].toUpper();
  return text;
}

// The selected event first, in the overview the band where it is a part of the recording.
std::vector<std::pair<QString, TNote>> Places(const TCommandTargets& on) {
  const TShownMission& mission = on.flow.Mission();
  const TNotedEvents events(mission.Events);
  std::vector<std::pair<QString, TNote>> places;
  const auto add = [&](const QString& caption, const TNote& note) {
    const QString place = Capitalized(QtText(NotePlace(note, events)));
    places.emplace_back(place.isEmpty() ? caption : QString("%1%2").arg(caption, place), note);
  };
  if (mission.SelectedEvent) add({}, NoteOnEvent(mission, *mission.SelectedEvent));
  if (on.views.NavigatorSpan()) add(QObject::tr("Band: "), NoteOnSpan(mission.Band));
  add(QObject::tr("The whole recording"), {});
  const bool isPart = on.views.NavigatorSpan() && *on.views.NavigatorSpan() != mission.Band;
  if (isPart && on.flow.View() == TView::Overview && places.size() == 3) std::swap(places[0], places[1]);
  return places;
}

void Edit(const TCommandTargets& on, const TNote& note, QWidget* parent) {
  const QString place = Capitalized(QtText(NotePlace(note, TNotedEvents(on.flow.Mission().Events))));
  TNoteDialog dialog(QObject::tr("Edit note"), {{place.isEmpty() ? QObject::tr("The whole recording") : place, note}},
                     parent);
  if (dialog.exec() == QDialog::Accepted) on.notes.Change(dialog.Typed());
}

// The list follows each change.
class TNoteList final : public QDialog {
 public:
  explicit TNoteList(const TCommandTargets& on) : QDialog(&on.form), FOn(on) {
    setObjectName("dlgNotes");
    setWindowTitle(tr("Notes"));
    FList->setMinimumSize(FList->fontMetrics().averageCharWidth() * 70, FList->fontMetrics().lineSpacing() * 12);
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Close, this);
    const auto add = [&](const char* name, const QString& caption, auto action) {
      QPushButton* button = Named(buttons->addButton(caption, QDialogButtonBox::ActionRole), name);
      connect(button, &QPushButton::clicked, this, action);
      return button;
    };
    add("btnNoteAdd", tr("&Add…"), [this] {
      AskAndAddNote(FOn);
      Fill();
    });
    FNeedNote = {add("btnNoteEdit", tr("&Edit…"), [this] { EditCurrent(); }),
                 add("btnNoteDelete", tr("&Delete"), [this] { DeleteCurrent(); }),
                 add("btnNoteGo", tr("&Go to"), [this] {
                   if (FList->currentRow() < 0) return;
                   FOn.notes.GoTo(Current().id);
                   accept();
                 })};
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    connect(FList, &QListWidget::itemDoubleClicked, this, [this] { EditCurrent(); });
    MakeColumn(this, {FProblem, FList, buttons});
    Fill();
  }

 protected:
  void keyPressEvent(QKeyEvent* event) override {
    if (event->key() == Qt::Key_Delete) return DeleteCurrent();
    if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) return EditCurrent();
    QDialog::keyPressEvent(event);
  }

 private:
  [[nodiscard]] const TNote& Current() const { return FNotes[static_cast<std::size_t>(FList->currentRow())]; }
  void Fill() {
    constexpr qsizetype kMaxLine = 300;
    const TShownMission& mission = FOn.flow.Mission();
    const TNotedEvents events(mission.Events);
    const int row = std::max(0, FList->currentRow());
    FNotes = SortedNotes(mission);
    FList->clear();
    for (const TNote& note : FNotes) {
      FList->addItem(ShownText(NoteSentence(note, events), kMaxLine));
      FList->item(FList->count() - 1)->setToolTip(Qt::convertFromPlainText(QtText(NoteText(note))));
    }
    FList->setCurrentRow(std::min(row, FList->count() - 1));
    for (QPushButton* button : FNeedNote) button->setEnabled(!FNotes.empty());
    const QString problem = QtText(mission.Notes.problem);
    FProblem->setText(problem.isEmpty() && FNotes.empty() ? tr("There are no notes yet.") : problem);
    FProblem->setVisible(!FProblem->text().isEmpty());
  }
  void EditCurrent() {
    if (FList->currentRow() < 0) return;
    Edit(FOn, Current(), this);
    Fill();
  }
  void DeleteCurrent() {
    if (FList->currentRow() < 0) return;
    const QString line = FList->currentItem()->text();
    if (!FOn.dialogs.Confirm(Utf8(tr("Delete this note?\n%1").arg(line)))) return;
    FOn.notes.Remove(Current().id);
    Fill();
  }

  const TCommandTargets& FOn;
  std::vector<TNote> FNotes;
  QListWidget* FList = Named(new QListWidget(this), "lstNotes", tr("Notes"));
  QLabel* FProblem = MakeSentence("lblNotesProblem", this);
  std::vector<QPushButton*> FNeedNote;
};

}  // namespace

void AskAndAddNote(const TCommandTargets& on) {
  if (!on.notes.MayChange()) return;
  QWidget* parent = QApplication::activeModalWidget();
  TNoteDialog dialog(QObject::tr("Add note"), Places(on), parent == nullptr ? &on.form : parent);
  if (dialog.exec() == QDialog::Accepted) on.notes.Add(dialog.Typed());
}

void ListNotes(const TCommandTargets& on) {
  if (on.flow.FileShown()) TNoteList(on).exec();
}

void StepNote(const TCommandTargets& on) {
  const std::string sentence = on.notes.Step();
  ShowNoteNotice(sentence.empty() ? Utf8(QObject::tr("The recording has no note on an event or a span")) : sentence,
                 on.controls);
}

void ShowNoteNotice(const std::string& sentence, IControls& controls) {
  constexpr qsizetype kMaxLine = 300;
  controls.ShowNotice(Utf8(ShownText(sentence, kMaxLine)), {});
}
