#include "gui/overview/uVerdictStrip.h"

#include <QGridLayout>
#include <QPainter>
#include <QStyle>
#include <QTextLayout>
#include <algorithm>
#include <utility>

#include "gui/common/uBoxes.h"
#include "gui/common/uQtText.h"
#include "gui/common/uTheme.h"

namespace {

constexpr int kGap = 8;       // px between buttons
constexpr int kPadding = 10;  // px left and right of the words
constexpr int kTopPadding = 6;
constexpr int kBetween = 6;  // px between the caption and the time beside it
constexpr int kMaxNoteLines = 2;
constexpr int kMinOneRow = 900;     // px of the strip; in less than that most notes are cut
constexpr double kValueSize = 1.5;  // of the font
constexpr double kFlatValueSize = 1.15;
constexpr int kMinNote = 48;  // px of a note that is cut, beside a small number
constexpr double kNoteSize = 0.88;
constexpr int kMinCharacters = 18;  // of the font, in a button beside five others

struct TCaption {
  const char* name;
  const char* text;
};
constexpr std::array<TCaption, kVerdictQuestionCount> kCaptions = {{{"btnVerdictEvents", "Events"},
                                                                    {"btnVerdictPeak", "Peak"},
                                                                    {"btnVerdictAboveAlarm", "Above alarm"},
                                                                    {"btnVerdictIntensity", "Worst by intensity"},
                                                                    {"btnVerdictOutOfLimits", "Out of limits"},
                                                                    {"btnVerdictRecorded", "Recorded"}}};

}  // namespace

TVerdictButton::TVerdictButton(const QString& name, const QString& caption, QWidget* parent)
    : QAbstractButton(parent), FCaption(caption) {
  setObjectName(name);
  setAttribute(Qt::WA_Hover);
  setFocusPolicy(Qt::StrongFocus);
  setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Fixed);
}

void TVerdictButton::ShowCell(const TVerdictCell& cell) {
  FCell = cell;
  const bool leads = cell.answer != TVerdictAnswer::Nothing;
  setCursor(leads ? Qt::PointingHandCursor : Qt::ArrowCursor);
  QStringList words;
  for (const std::string& part : {cell.value, cell.unit, cell.delta, cell.note, cell.when}) {
    if (!part.empty()) words.append(QtText(part));
  }
  setAccessibleName(QString("%1: %2").arg(FCaption, words.join(' ')));
  setAccessibleDescription(QtText(cell.tip));
  // The words themselves may be cut.
  setToolTip(Qt::convertFromPlainText(QString("%1\n%2").arg(accessibleName(), QtText(cell.tip)).trimmed()));
  update();
}

QFont TVerdictButton::Scaled(double factor, bool bold) const {
  QFont scaled = font();
  scaled.setPointSizeF(scaled.pointSizeF() * factor);
  scaled.setBold(bold);
  return scaled;
}

QFont TVerdictButton::ValueFont(int room) const {
  const QFont large = Scaled(kValueSize, true);
  const bool fits = QFontMetrics(large).horizontalAdvance(QtText(FCell.value)) <= room;
  return FForm != TForm::Flat && fits ? large : Scaled(kFlatValueSize, true);
}

QSize TVerdictButton::sizeHint() const {
  const int caption = QFontMetrics(Scaled(kNoteSize, false)).height();
  const int value = QFontMetrics(Scaled(FForm == TForm::Flat ? kFlatValueSize : kValueSize, true)).height();
  const int height = (FForm == TForm::Tall ? 2 : 1) * caption + value;
  return {fontMetrics().averageCharWidth() * kMinCharacters + 2 * kPadding, height + 2 * kTopPadding};
}

void TVerdictButton::SetForm(TForm form) {
  if (std::exchange(FForm, form) != form) updateGeometry();
}

// The caption, and at its right the difference to the reference, else the time where it fits.
void TVerdictButton::PaintHead(QPainter& painter, const QRect& head) const {
  const QFontMetrics metrics = painter.fontMetrics();
  const QString delta = QtText(FCell.delta);
  const int taken = delta.isEmpty() ? 0 : metrics.horizontalAdvance(delta) + kBetween;
  painter.drawText(head, Qt::AlignLeft | Qt::AlignVCenter,
                   metrics.elidedText(FCaption, Qt::ElideRight, head.width() - taken));
  const QString when = QtText(FCell.when);
  const int needed = metrics.horizontalAdvance(FCaption) + 2 * kBetween + metrics.horizontalAdvance(when);
  if (delta.isEmpty() && needed > head.width()) return;
  if (!delta.isEmpty()) painter.setPen(QColor(TokensOf(palette()).ink));
  painter.drawText(head, Qt::AlignRight | Qt::AlignVCenter, delta.isEmpty() ? when : delta);
}

// Below the number or beside it in one line, or instead of it in two; the last is cut where the words are too long.
void TVerdictButton::PaintNote(QPainter& painter, const QRect& room) const {
  const QString note = QtText(FCell.note);
  const QFontMetrics metrics = painter.fontMetrics();
  const qsizetype maxLines = FCell.value.empty() && FForm == TForm::Tall ? kMaxNoteLines : 1;
  QTextLayout layout(note, painter.font());
  layout.beginLayout();
  QRect place(room.left(), room.top(), room.width(), metrics.height());
  for (qsizetype i = 0; i < maxLines; ++i) {
    QTextLine line = layout.createLine();
    if (!line.isValid()) break;
    line.setLineWidth(room.width());
    const QString words =
        i + 1 == maxLines ? note.mid(line.textStart()) : note.mid(line.textStart(), line.textLength());
    painter.drawText(place, Qt::AlignLeft | Qt::AlignVCenter,
                     metrics.elidedText(words.trimmed(), Qt::ElideRight, room.width()));
    place.translate(0, metrics.height());
  }
  layout.endLayout();
}

void TVerdictButton::paintEvent(QPaintEvent* /*event*/) {
  const TThemeTokens& tokens = TokensOf(palette());
  const bool leads = FCell.answer != TVerdictAnswer::Nothing;
  QPainter painter(this);
  painter.setRenderHint(QPainter::Antialiasing);
  const bool hovered = leads && (underMouse() || isDown());
  painter.setBrush(QColor(FCell.isOut ? tokens.alarmTint : hovered ? tokens.accentTint : tokens.surface));
  const bool focused = hasFocus();
  const double width = focused ? 2 : 1 / devicePixelRatioF();
  painter.setPen(QPen(QColor(focused || hovered ? tokens.accent
                             : FCell.isOut      ? tokens.alarm
                                                : tokens.hairline),
                      width));
  painter.drawRoundedRect(QRectF(rect()).adjusted(width / 2, width / 2, -width / 2, -width / 2), 4, 4);

  QRect room = rect().adjusted(kPadding, kTopPadding, -kPadding, -kTopPadding);
  painter.setFont(Scaled(kNoteSize, false));
  painter.setPen(QColor(tokens.secondaryInk));
  const QFontMetrics small = painter.fontMetrics();
  const int caption = small.height();
  PaintHead(painter, QRect(room.topLeft(), QSize(room.width(), caption)));
  room.setTop(room.top() + caption);
  painter.setFont(ValueFont(room.width()));
  painter.setPen(QColor(FCell.isOut ? tokens.alarm : tokens.ink));
  const QFontMetrics large = painter.fontMetrics();
  const QPointF foot(room.left(), room.top() + large.ascent());
  const QString value = large.elidedText(QtText(FCell.value), Qt::ElideRight, room.width());
  painter.drawText(foot, value);
  painter.setFont(Scaled(kNoteSize, false));
  painter.setPen(QColor(tokens.secondaryInk));
  double used = value.isEmpty() ? 0 : large.horizontalAdvance(value) + kBetween / 2.0;
  if (used + small.horizontalAdvance(QtText(FCell.unit)) <= room.width()) {
    painter.drawText(foot + QPointF(used, 0), QtText(FCell.unit));
    used += small.horizontalAdvance(QtText(FCell.unit));
  }
  if (FForm != TForm::Tall && !value.isEmpty()) {
    room = QRect(room.left() + qRound(used) + kBetween, qRound(foot.y()) - small.ascent(),
                 room.width() - qRound(used) - kBetween, small.height());
  } else if (!value.isEmpty()) {
    room.setTop(room.top() + large.height());
  }
  painter.setPen(QColor(FCell.value.empty() ? tokens.ink : tokens.secondaryInk));
  const bool isStub = FForm == TForm::Flat && !value.isEmpty() && room.width() < kMinNote &&
                      small.horizontalAdvance(QtText(FCell.note)) > room.width();
  if (!isStub) PaintNote(painter, room);
}

TStripLine::TStripLine(const QString& object, const QString& name, const QString& click, QWidget* parent)
    : QAbstractButton(parent), FName(name), FClick(click) {
  Named(this, object, name);
  setFocusPolicy(Qt::StrongFocus);
  setCursor(Qt::PointingHandCursor);
  setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Fixed);
  hide();
}

void TStripLine::ShowText(const QString& text, qsizetype bold, bool isBad) {
  FText = text;
  FBold = bold;
  FIsBad = isBad;
  setVisible(!text.isEmpty());
  setAccessibleName(text.isEmpty() ? FName : text);
  setToolTip(Qt::convertFromPlainText(QString("%1\n%2").arg(accessibleName(), FClick)));
  update();
}

QSize TStripLine::sizeHint() const {
  return {fontMetrics().averageCharWidth() * kMinCharacters, fontMetrics().height() + 2 * kTopPadding};
}

void TStripLine::paintEvent(QPaintEvent* /*event*/) {
  const TThemeTokens& tokens = TokensOf(palette());
  QPainter painter(this);
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setBrush(QColor(FIsBad ? tokens.alarmTint : tokens.surface));
  const double width = hasFocus() ? 2 : 1;
  const bool marked = hasFocus() || underMouse();
  painter.setPen(QPen(QColor(marked ? tokens.accent : FIsBad ? tokens.alarm : tokens.hairline), width));
  painter.drawRoundedRect(QRectF(rect()).adjusted(width / 2, width / 2, -width / 2, -width / 2), 4, 4);
  QRect room = rect().adjusted(kPadding, 0, -kPadding, 0);
  QFont bold = font();
  bold.setBold(true);
  painter.setFont(bold);
  painter.setPen(QColor(FIsBad ? tokens.alarm : tokens.ink));
  painter.drawText(room, Qt::AlignLeft | Qt::AlignVCenter,
                   painter.fontMetrics().elidedText(FText.left(FBold), Qt::ElideRight, room.width()));
  room.setLeft(room.left() + painter.fontMetrics().horizontalAdvance(FText.left(FBold)));
  painter.setFont(font());
  painter.setPen(QColor(tokens.ink));
  painter.drawText(room, Qt::AlignLeft | Qt::AlignVCenter,
                   fontMetrics().elidedText(FText.mid(FBold), Qt::ElideRight, room.width()));
}

TVerdictStrip::TVerdictStrip(QWidget* parent)
    : QWidget(parent),
      FGrid(new QGridLayout(this)),
      FJudgement(new TStripLine("btnJudgement", tr("Judgement"), tr("Click: change the limits"), this)),
      FReference(new TStripLine("btnReference", tr("Reference"), tr("Click: compare the statistics"), this)) {
  Named(this, "pnlVerdict", tr("Verdict"));
  FGrid->setContentsMargins(0, 0, 0, kGap);
  FGrid->setSpacing(kGap);
  for (std::size_t i = 0; i < FButtons.size(); ++i) {
    auto* button = new TVerdictButton(kCaptions[i].name, kCaptions[i].text, this);
    FButtons[i] = button;
    connect(button, &QAbstractButton::clicked, this, [this, i] {
      const TVerdictAnswer answer = FButtons[i]->Cell().answer;
      if (answer != TVerdictAnswer::Nothing) emit Asked(static_cast<TVerdictQuestion>(i), answer);
    });
  }
  connect(FJudgement, &QAbstractButton::clicked, this,
          [this] { emit Asked(TVerdictQuestion::AboveAlarm, TVerdictAnswer::EditLimits); });
  connect(FReference, &QAbstractButton::clicked, this,
          [this] { emit Asked(TVerdictQuestion::Events, TVerdictAnswer::ShowStatistics); });
  Arrange();
}

void TVerdictStrip::ShowCells(const TVerdictCells& cells) {
  int wide = -1;
  for (std::size_t i = 0; i < cells.size(); ++i) {
    FButtons[i]->ShowCell(cells[i]);
    if (cells[i].value.empty() && !cells[i].note.empty()) wide = static_cast<int>(i);
  }
  if (std::exchange(FWideColumn, wide) != wide) FColumns = 0;
  Arrange();
}

// The outcome stands out: "Failed", "Passed", "Not judged".
void TVerdictStrip::ShowJudgement(const TJudgementLine& line) {
  QString text = QtText(line.text);
  if (!text.isEmpty()) text[0] = text[0].toUpper();
  const int words = line.outcome == TJudgementOutcome::NotJudged ? 2 : 1;
  FJudgement->ShowText(text, text.section(' ', 0, words - 1).size(), line.outcome == TJudgementOutcome::Failed);
}

void TVerdictStrip::ShowReference(const std::string& line) {
  const QString text = QtText(line);
  FReference->ShowText(text, text.section(':', 0, 0).size(), false);
}

void TVerdictStrip::SetFlat(bool flat) {
  if (std::exchange(FIsFlat, flat) == flat) return;
  FColumns = 0;
  Arrange();
}

void TVerdictStrip::Arrange() {
  const int count = static_cast<int>(FButtons.size());
  const int needed = std::max(kMinOneRow, count * (FButtons[0]->sizeHint().width() + kGap) - kGap);
  const int columns = FIsFlat || width() >= needed ? count : count / 2;
  if (std::exchange(FColumns, columns) == columns) return;
  using TForm = TVerdictButton::TForm;
  for (int i = 0; i < count; ++i) {
    TVerdictButton* button = FButtons[static_cast<std::size_t>(i)];
    button->SetForm(FIsFlat ? TForm::Flat : columns < count ? TForm::Low : TForm::Tall);
    FGrid->addWidget(button, i / columns, i % columns);
  }
  FGrid->addWidget(FJudgement, 2, 0, 1, columns);
  FGrid->addWidget(FReference, 3, 0, 1, columns);
  for (int column = 0; column < count; ++column) {
    const int share = column == FWideColumn && columns == count ? 3 : 2;
    FGrid->setColumnStretch(column, column < columns ? share : 0);
  }
}

void TVerdictStrip::resizeEvent(QResizeEvent* event) {
  QWidget::resizeEvent(event);
  Arrange();
}
