#include "gui/settings/uLimitProfileBar.h"

#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTextDocument>

#include "base/uFiles.h"
#include "gui/common/uBoxes.h"
#include "gui/common/uQtText.h"

namespace {

constexpr qsizetype kLongestName = 60;  // characters in the list
constexpr int kMaxNameLength = 200;

QPushButton* MakeButton(const char* name, const QString& caption, const QString& tip, QWidget* parent) {
  return Named(new QPushButton(caption, parent), name, {}, tip);
}

}  // namespace

TLimitProfileBar::TLimitProfileBar(QWidget* parent)
    : QWidget(parent), FList(new QComboBox(this)), FNameRow(new QWidget(this)), FName(new QLineEdit(FNameRow)) {
  Named(FList, "cmbLimitProfile", tr("Limit profile"),
        tr("Limits under a name, with what is allowed beyond each: a recording passes or fails them"));
  FList->setSizeAdjustPolicy(QComboBox::AdjustToContents);
  auto* create = MakeButton("btnLimitProfileNew", tr("New…"), tr("A profile with every limit at its default"), this);
  auto* saveAs = MakeButton("btnLimitProfileSaveAs", tr("Save as…"),
                            tr("These limits, and what is allowed beyond them, under another name"), this);
  FDelete = MakeButton("btnLimitProfileDelete", tr("Delete…"), tr("Remove the profile; the limits stay"), this);
  Named(FName, "edtLimitProfileName", tr("Name of the profile"));
  FName->setMaxLength(kMaxNameLength);
  FName->setPlaceholderText(FName->accessibleName());
  FSave = MakeButton("btnLimitProfileSave", tr("Save"), tr("Save the profile under this name"), FNameRow);

  auto* row = MakeRow(nullptr, {new QLabel(tr("Profile"), this), {FList, 1}, create, saveAs, FDelete});
  MakeRow(FNameRow, {{FName, 1}, FSave}, kNoMargins);
  MakeColumn(this, {row, FNameRow}, {QMargins(0, 0, 0, 4)});
  FNameRow->hide();

  connect(FList, &QComboBox::activated, this, [this](int index) { emit Chosen(FList->itemData(index).toString()); });
  connect(create, &QPushButton::clicked, this, [this] { AskForName(TAction::Create); });
  connect(saveAs, &QPushButton::clicked, this, [this] { AskForName(TAction::SaveAs); });
  connect(FDelete, &QPushButton::clicked, this, &TLimitProfileBar::DeleteAsked);
  connect(FName, &QLineEdit::textChanged, this, [this](const QString& name) { FSave->setDisabled(name.isEmpty()); });
  connect(FName, &QLineEdit::returnPressed, this, &TLimitProfileBar::TakeName);
  connect(FSave, &QPushButton::clicked, this, &TLimitProfileBar::TakeName);
}

void TLimitProfileBar::ShowProfiles(std::span<const TListedProfile> profiles, const std::filesystem::path& inForce) {
  if (FName->hasFocus() || FSave->hasFocus()) FList->setFocus();
  FNameRow->hide();
  FList->clear();
  FList->addItem(tr("none"), QString());
  for (const TListedProfile& profile : profiles) {
    const QString name = ShownText(profile.name, kLongestName);
    const bool usable = profile.problem.empty();
    FList->addItem(usable ? name : tr("%1 (cannot be used)").arg(name), QtText(Utf8FromPath(profile.file)));
    const QString tip = QtText(Utf8FromPath(profile.file) + (usable ? "" : "\n" + profile.problem));
    FList->setItemData(FList->count() - 1, Qt::convertFromPlainText(tip), Qt::ToolTipRole);
    if (profile.file == inForce) FList->setCurrentIndex(FList->count() - 1);
  }
  FDelete->setDisabled(inForce.empty());
}

void TLimitProfileBar::AskForName(TAction action) {
  FAction = action;
  FName->clear();
  FSave->setDisabled(true);
  FNameRow->show();
  FName->setFocus();
}

void TLimitProfileBar::TakeName() {
  const QString name = FName->text().trimmed();
  if (name.isEmpty()) return;
  FAction == TAction::Create ? emit CreateAsked(name) : emit SaveAsAsked(name);
}
