// How bad the recording is, in six buttons above the view: each answers a question and leads to what it names. The
// strip takes two rows where six buttons have no room beside each other, and one low row in a low window.
#pragma once

#include <QAbstractButton>
#include <array>

#include "shell/uVerdictCells.h"

class QGridLayout;

class TVerdictButton : public QAbstractButton {
  Q_OBJECT

 public:
  TVerdictButton(const QString& name, const QString& caption, QWidget* parent);
  void ShowCell(const TVerdictCell& cell);
  [[nodiscard]] const TVerdictCell& Cell() const { return FCell; }
  enum class TForm {
    Tall,  // the note stands below the number
    Low,   // beside it
    Flat   // beside a smaller number, where there is room
  };
  void SetForm(TForm form);
  [[nodiscard]] QSize sizeHint() const override;
  [[nodiscard]] QSize minimumSizeHint() const override { return sizeHint(); }

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  void PaintHead(QPainter& painter, const QRect& head) const;
  void PaintNote(QPainter& painter, const QRect& room) const;
  [[nodiscard]] QFont Scaled(double factor, bool bold) const;
  // The largest in which the value fits.
  [[nodiscard]] QFont ValueFont(int room) const;

  QString FCaption;
  TVerdictCell FCell;
  TForm FForm = TForm::Tall;
};

// A sentence below the buttons, as a button.
class TStripLine : public QAbstractButton {
  Q_OBJECT

 public:
  // `name` is what the line is called while it is hidden, `click` says what a click does.
  TStripLine(const QString& object, const QString& name, const QString& click, QWidget* parent);
  // Hidden while there is no text, of which `bold` characters at the beginning stand out.
  void ShowText(const QString& text, qsizetype bold, bool isBad);
  [[nodiscard]] QSize sizeHint() const override;

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  QString FName, FClick, FText;
  qsizetype FBold = 0;
  bool FIsBad = false;
};

class TVerdictStrip : public QWidget {
  Q_OBJECT

 public:
  explicit TVerdictStrip(QWidget* parent);
  void ShowCells(const TVerdictCells& cells);
  // Whether the recording passes the limit profile in force, and by what not; empty without one.
  void ShowJudgement(const TJudgementLine& line);
  // What Δ stands for; empty without a reference.
  void ShowReference(const std::string& line);
  // In one low row, so that what is below has room.
  void SetFlat(bool flat);

 signals:
  // A cell that leads somewhere was clicked.
  void Asked(TVerdictQuestion question, TVerdictAnswer answer);

 protected:
  void resizeEvent(QResizeEvent* event) override;

 private:
  void Arrange();

  QGridLayout* FGrid;
  std::array<TVerdictButton*, kVerdictQuestionCount> FButtons{};
  TStripLine* FJudgement;  // below them
  TStripLine* FReference;
  bool FIsFlat = false;
  int FColumns = 0;
  int FWideColumn = -1;  // of a cell that says a whole sentence
};
