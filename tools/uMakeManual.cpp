// make_manual IN.md OUT.pdf VERSION: sets a document of the manual as PDF. Qt reads the Markdown and breaks the lines;
// what it does not do is done here: contents, running heads, page numbers, pictures as wide as the text, titles that
// are repeated on each page of a table, headings that stay with what follows. Pictures are found beside IN.md and below
// the current folder.
#include <QAbstractTextDocumentLayout>
#include <QFile>
#include <QFileInfo>
#include <QGuiApplication>
#include <QImageReader>
#include <QPageLayout>
#include <QPainter>
#include <QPdfWriter>
#include <QPixmap>
#include <QTextBlock>
#include <QTextCursor>
#include <QTextDocument>
#include <QTextList>
#include <QTextTable>
#include <cstdio>
#include <stdexcept>
#include <vector>

namespace {

constexpr const char *kFont = "Noto Sans", *kCodeFont = "DejaVu Sans Mono";
constexpr double kBodySize = 9.5, kInlineCodeSize = 8.5, kCodeSize = 7.5, kTableSize = 8.5;  // pt
constexpr double kHeadingSizes[] = {22, 14, 11, 10};
constexpr int kResolution = 1200;              // dots an inch
constexpr QMarginsF kMargins(20, 22, 20, 20);  // mm
constexpr double kWholeWidth = 1700;           // px of a picture as wide as the text
constexpr double kMaxPictureHeight = 0.45;     // of a page
constexpr double kNoLigatures = 0.05;          // any spacing keeps "fi" two letters, which a search finds
constexpr double kCellPadding = 2.5;           // pt above and below
constexpr double kCellSide = 6;                // pt left and right
constexpr int kDrawingScale = 5;               // of an SVG, to be sharp on paper
constexpr int kMaxKeptLines = 16;              // a longer example may be cut
constexpr double kBelowTable = 14;             // pt of its padding and margin
constexpr int kMaxKeptRows = 8;                // of a table
constexpr QRgb kInk = 0xFF1B2430, kSecondaryInk = 0xFF5A6675, kHairline = 0xFFDDE1E6, kGround = 0xFFF4F5F7;

double Dots(double points) {
  return points * kResolution / 72;
}

bool InTable(const QTextBlock& block) {
  return QTextCursor(block).currentTable() != nullptr;
}

bool IsCode(const QTextBlock& block) {
  return block.blockFormat().hasProperty(QTextFormat::BlockCodeLanguage);
}

int LevelOf(const QTextBlock& block) {
  return block.blockFormat().headingLevel();
}

class TManual {
 public:
  TManual(const QString& source, QPagedPaintDevice& paper) : FPaper(paper) {
    QFile file(source);
    if (!file.open(QIODevice::ReadOnly)) throw std::runtime_error("cannot read " + source.toStdString());
    FDocument.setBaseUrl(QUrl::fromLocalFile(QFileInfo(source).absolutePath() + '/'));
    FDocument.documentLayout()->setPaintDevice(&paper);
    FDocument.setDefaultFont(FontOf(kBodySize));
    FDocument.setMarkdown(QString::fromUtf8(file.readAll()), QTextDocument::MarkdownDialectGitHub);
    FDocument.setDocumentMargin(0);
    FDocument.setPageSize(QSizeF(paper.width(), paper.height()));
    QTextCursor whole(&FDocument);
    whole.beginEditBlock();  // the document is laid out once
    for (QTextBlock block = FDocument.begin(); block.isValid(); block = block.next()) Style(block);
    for (QTextFrame* frame : FDocument.rootFrame()->childFrames()) {
      if (auto* table = qobject_cast<QTextTable*>(frame)) Style(*table);
    }
    AddContents();
    whole.endEditBlock();
    KeepTogether();
    NumberContents();
  }

  [[nodiscard]] QString Title() const { return FTitle; }

  void Print(const QString& version) {
    QPainter painter(&FPaper);
    painter.setRenderHint(QPainter::LosslessImageRendering);
    const int pages = FDocument.pageCount();
    for (int page = 0; page < pages; ++page) {
      if (page > 0) FPaper.newPage();
      PrintHead(painter, version, page, pages);
      painter.save();
      painter.translate(0, -page * FDocument.pageSize().height());
      QAbstractTextDocumentLayout::PaintContext context;
      context.clip = QRectF(QPointF(0, page * FDocument.pageSize().height()), FDocument.pageSize());
      context.palette.setColor(QPalette::Text, QColor(kInk));
      painter.setClipRect(context.clip);
      FDocument.documentLayout()->draw(&painter, context);
      painter.restore();
    }
  }

 private:
  static QFont FontOf(double size, bool bold = false) {
    QFont font(kFont);
    font.setPointSizeF(size);
    font.setBold(bold);
    font.setLetterSpacing(QFont::AbsoluteSpacing, kNoLigatures);
    return font;
  }

  // Qt measures margins of blocks in pixels of the screen.
  [[nodiscard]] static double Space(double points) { return points * 96 / 72; }

  void Style(const QTextBlock& block) {
    QTextCursor cursor(block);
    QTextBlockFormat format = block.blockFormat();
    if (const int level = LevelOf(block); level > 0) {
      const auto index = static_cast<std::size_t>(std::min(level, 4)) - 1;
      if (level == 1) FTitle = block.text();
      format.setTopMargin(Space(level == 1 ? 0 : kHeadingSizes[index] * 1.3));
      format.setBottomMargin(Space(level == 1 ? 12 : 4));
      QTextCharFormat letters;
      letters.setFont(FontOf(kHeadingSizes[index], true));
      Select(block).setCharFormat(letters);  // in place of the sizes that Qt gives
    } else if (IsCode(block)) {
      format.setBackground(QColor(kGround));
      format.setTopMargin(IsCode(block.previous()) ? 0 : Space(4));
      format.setBottomMargin(IsCode(block.next()) ? 0 : Space(6));
      format.setLeftMargin(Dots(6));  // unlike the others, Qt takes it as it is
      Select(block).mergeCharFormat(CodeLetters(kCodeSize));
    } else {
      if (!IsPicture(block)) format.setLineHeight(115, QTextBlockFormat::ProportionalHeight);
      format.setTopMargin(0);
      const bool inList = block.textList() != nullptr && block.next().textList() != nullptr;
      format.setBottomMargin(Space(inList ? 2 : 5));
      if (IsPicture(block)) format.setTopMargin(Space(4));
    }
    cursor.setBlockFormat(format);
    if (!IsCode(block)) StyleCodeIn(block, kInlineCodeSize);
    FitPictures(block);
  }

  static QTextCharFormat CodeLetters(double size) {
    QFont font(kCodeFont);
    font.setPointSizeF(size);
    QTextCharFormat letters;
    letters.setFont(font);
    return letters;
  }

  static QTextCursor Select(const QTextBlock& block) {
    QTextCursor cursor(block);
    cursor.movePosition(QTextCursor::EndOfBlock, QTextCursor::KeepAnchor);
    return cursor;
  }

  // The words in a line that are typed or printed as they stand.
  static void StyleCodeIn(const QTextBlock& block, double size) {
    std::vector<QTextCursor> words;
    for (auto at = block.begin(); !at.atEnd(); ++at) {
      const QTextFragment fragment = at.fragment();
      if (!fragment.charFormat().fontFixedPitch()) continue;
      QTextCursor& word = words.emplace_back(block);
      word.setPosition(fragment.position());
      word.setPosition(fragment.position() + fragment.length(), QTextCursor::KeepAnchor);
    }
    for (QTextCursor& word : words) word.mergeCharFormat(CodeLetters(size));
  }

  static bool IsPicture(const QTextBlock& block) {
    return block.length() == 2 && block.begin().fragment().charFormat().isImageFormat();
  }

  // As wide as the text, a part of the window less.
  void FitPictures(const QTextBlock& block) {
    for (auto at = block.begin(); !at.atEnd(); ++at) {
      QTextImageFormat picture = at.fragment().charFormat().toImageFormat();
      if (!picture.isValid()) continue;
      const QString beside = FDocument.baseUrl().resolved(picture.name()).toLocalFile();
      QImageReader reader(QFile::exists(beside) ? beside : picture.name());
      if (reader.format() == "svg") reader.setScaledSize(reader.size() * kDrawingScale);
      const QImage image = reader.read();
      if (image.isNull()) throw std::runtime_error("there is no picture " + picture.name().toStdString());
      FDocument.addResource(QTextDocument::ImageResource, QUrl(picture.name()), QPixmap::fromImage(image));
      const double share = std::min(1.0, image.width() / kWholeWidth);
      const QSizeF room(FDocument.pageSize().width() * share, FDocument.pageSize().height() * kMaxPictureHeight);
      const QSizeF fitted = QSizeF(image.size()).scaled(room, Qt::KeepAspectRatio) * 96 / kResolution;
      picture.setWidth(fitted.width());
      picture.setHeight(fitted.height());
      QTextCursor cursor(&FDocument);
      cursor.setPosition(at.fragment().position());
      cursor.setPosition(at.fragment().position() + at.fragment().length(), QTextCursor::KeepAnchor);
      cursor.setCharFormat(picture);
      return;  // the iterator does not outlive the change
    }
  }

  static void Style(QTextTable& table) {
    QTextTableFormat format = table.format();
    format.setHeaderRowCount(1);
    format.setBorder(0.5);
    format.setBorderStyle(QTextFrameFormat::BorderStyle_Solid);
    format.setBorderBrush(QColor(kHairline));
    format.setBorderCollapse(true);
    format.setCellPadding(Space(kCellPadding));
    format.setCellSpacing(0);
    format.setTopMargin(Space(2));
    format.setBottomMargin(Space(8));
    format.setWidth(QTextLength(QTextLength::PercentageLength, 100));
    table.setFormat(format);
    QTextCharFormat letters;
    letters.setFontPointSize(kTableSize);
    for (int row = 0; row < table.rows(); ++row) {
      for (int column = 0; column < table.columns(); ++column) {
        QTextTableCell cell = table.cellAt(row, column);
        for (auto at = cell.begin(); !at.atEnd(); ++at) {
          QTextCursor cursor(at.currentBlock());
          QTextBlockFormat block = cursor.blockFormat();
          block.setBottomMargin(0);
          cursor.setBlockFormat(block);
          Select(at.currentBlock()).mergeCharFormat(letters);
          StyleCodeIn(at.currentBlock(), kCodeSize);
        }
        QTextTableCellFormat around = cell.format().toTableCellFormat();
        around.setLeftPadding(Space(kCellSide));
        around.setRightPadding(Space(kCellSide));
        if (row == 0) around.setBackground(QColor(kGround));
        cell.setFormat(around);
      }
    }
  }

  // A table of the chapters behind the first heading; the pages come when they are known.
  void AddContents() {
    std::vector<QString> chapters;
    for (QTextBlock block = FDocument.begin(); block.isValid(); block = block.next()) {
      if (LevelOf(block) == 2) chapters.push_back(block.text());
    }
    if (chapters.size() < 2) return;
    QTextCursor cursor(FDocument.begin());
    cursor.movePosition(QTextCursor::EndOfBlock);
    cursor.insertBlock({}, {});
    QTextTableFormat format;
    format.setBorder(0);
    format.setCellPadding(Space(1));
    format.setCellSpacing(0);
    format.setBottomMargin(Space(10));
    format.setWidth(QTextLength(QTextLength::PercentageLength, 100));
    format.setColumnWidthConstraints(
        {QTextLength(QTextLength::PercentageLength, 92), QTextLength(QTextLength::PercentageLength, 8)});
    FContents = cursor.insertTable(static_cast<int>(chapters.size()), 2, format);
    QTextCharFormat letters;
    letters.setFont(FontOf(kBodySize));
    for (std::size_t i = 0; i < chapters.size(); ++i) {
      FContents->cellAt(static_cast<int>(i), 0).firstCursorPosition().insertText(chapters[i], letters);
    }
  }

  void NumberContents() {
    if (FContents == nullptr) return;
    QTextCharFormat letters;
    letters.setFont(FontOf(kBodySize));
    QTextBlockFormat right;
    right.setAlignment(Qt::AlignRight);
    int row = 0;
    for (QTextBlock block = FDocument.begin(); block.isValid(); block = block.next()) {
      if (LevelOf(block) != 2) continue;
      QTextCursor cursor = FContents->cellAt(row++, 1).firstCursorPosition();
      cursor.setBlockFormat(right);
      cursor.insertText(QString::number(PageOf(block) + 1), letters);
    }
  }

  [[nodiscard]] int PageOf(double y) const { return static_cast<int>(y / FDocument.pageSize().height()); }
  [[nodiscard]] QRectF BoxOf(const QTextBlock& block) const {
    return FDocument.documentLayout()->blockBoundingRect(block);
  }
  [[nodiscard]] int PageOf(const QTextBlock& block) const { return PageOf(BoxOf(block).top() + 1); }

  static bool IsShort(const QTextTable& table) { return table.rows() <= kMaxKeptRows; }

  // A short table is not cut, and the titles of a long one need the row below them.
  [[nodiscard]] QTextBlock LastKept(const QTextTable& table) const {
    const int row = IsShort(table) ? table.rows() - 1 : 1;
    QTextBlock last = table.cellAt(row, 0).lastCursorPosition().block();
    for (int column = 1; column < table.columns(); ++column) {
      const QTextBlock block = table.cellAt(row, column).lastCursorPosition().block();
      if (BoxOf(block).bottom() > BoxOf(last).bottom()) last = block;
    }
    return last;
  }

  // The last block that must stand on the page of this one: a heading needs what follows, a sentence that ends in a
  // colon its example, and a short example is not cut.
  [[nodiscard]] QTextBlock LastKept(const QTextBlock& first) const {
    QTextBlock last = first;
    int lines = 0;
    while (last.next().isValid()) {
      const bool leads = LevelOf(last) > 0 || (last.text().endsWith(':') && !InTable(last));
      const bool inside = IsCode(last) && IsCode(last.next()) && ++lines < kMaxKeptLines;
      if (!leads && !inside) break;
      last = last.next();
    }
    if (last != first && InTable(last)) last = LastKept(*QTextCursor(last).currentTable());
    return last;
  }

  // Starts a page before what would be torn apart, until nothing is.
  void KeepTogether() {
    for (QTextBlock block = FDocument.begin(); block.isValid(); block = block.next()) {
      QTextTable* table = QTextCursor(block).currentTable();
      if (table != nullptr && InTable(block.previous())) continue;
      if (table == nullptr && IsCode(block) && IsCode(block.previous())) continue;
      const QTextBlock last = table != nullptr ? LastKept(*table) : LastKept(block);
      const bool endsTable = InTable(last) && IsShort(*QTextCursor(last).currentTable());
      const double bottom = BoxOf(last).bottom() + (endsTable ? Dots(kBelowTable) : 0);
      if (PageOf(block) != PageOf(bottom - 1)) StartPageWith(block, table);
      if (table != nullptr) KeepRows(*table);
    }
  }

  static void StartPageWith(const QTextBlock& block, QTextTable* table) {
    if (table != nullptr) {
      QTextTableFormat format = table->format();
      format.setPageBreakPolicy(QTextFormat::PageBreak_AlwaysBefore);
      table->setFormat(format);
    } else {
      QTextBlockFormat format = block.blockFormat();
      format.setPageBreakPolicy(QTextFormat::PageBreak_AlwaysBefore);
      format.setTopMargin(0);
      QTextCursor(block).setBlockFormat(format);
    }
  }

  // A row that would be cut begins the next page: the row above it is made that much higher.
  void KeepRows(QTextTable& table) {
    for (int row = 2; row < table.rows(); ++row) {
      double top = FDocument.size().height(), bottom = 0;
      for (int column = 0; column < table.columns(); ++column) {
        const QTextTableCell cell = table.cellAt(row, column);
        top = std::min(top, BoxOf(cell.firstCursorPosition().block()).top());
        bottom = std::max(bottom, BoxOf(cell.lastCursorPosition().block()).bottom());
      }
      // The lower edge of a table must not reach a page of its own.
      if (row == table.rows() - 1) bottom += Dots(kBelowTable);
      const int page = PageOf(top + 1);
      if (page == PageOf(bottom - 1)) continue;
      const double rest = (page + 1) * FDocument.pageSize().height() - top;
      QTextTableCell above = table.cellAt(row - 1, 0);
      QTextTableCellFormat format = above.format().toTableCellFormat();
      format.setBottomPadding(Space(kCellPadding) + rest * 96 / kResolution);
      above.setFormat(format);
    }
  }

  void PrintHead(QPainter& painter, const QString& version, int page, int pages) const {
    painter.setFont(FontOf(8));
    painter.setPen(QColor(kSecondaryInk));
    const QRectF text(QPointF(), FDocument.pageSize());
    const double gap = Dots(12);
    const QRectF head(0, -gap - Dots(12), text.width(), Dots(12));
    const QRectF foot(0, text.height() + gap, text.width(), Dots(12));
    if (page > 0) painter.drawText(head, Qt::AlignLeft | Qt::AlignVCenter, FTitle);
    painter.drawText(foot, Qt::AlignLeft | Qt::AlignVCenter, "ShockScope " + version);
    painter.drawText(foot, Qt::AlignRight | Qt::AlignVCenter, QString("Page %1 of %2").arg(page + 1).arg(pages));
    painter.setPen(QPen(QColor(kHairline), Dots(0.5)));
    painter.drawLine(foot.topLeft() - QPointF(0, Dots(2)), foot.topRight() - QPointF(0, Dots(2)));
  }

  QPagedPaintDevice& FPaper;
  QTextDocument FDocument;
  QTextTable* FContents = nullptr;
  QString FTitle;
};

}  // namespace

int main(int argc, char** argv) {
  qputenv("QT_QPA_PLATFORM", "offscreen");
  const QGuiApplication application(argc, argv);
  if (argc != 4) {
    std::fputs("usage: make_manual IN.md OUT.pdf VERSION\n", stderr);
    return 2;
  }
  try {
    QFile file(argv[2]);
    if (!file.open(QIODevice::WriteOnly)) throw std::runtime_error("cannot write the document");
    QPdfWriter paper(&file);
    paper.setResolution(kResolution);
    paper.setPageLayout(
        QPageLayout(QPageSize(QPageSize::A4), QPageLayout::Portrait, kMargins, QPageLayout::Millimeter));
    TManual manual(argv[1], paper);
    paper.setTitle(manual.Title());
    paper.setCreator("ShockScope");
    manual.Print(argv[3]);
    return 0;
  } catch (const std::exception& error) {
    std::fprintf(stderr, "make_manual: %s: %s\n", argv[1], error.what());
    return 1;
  }
}
