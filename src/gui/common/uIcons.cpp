#include "gui/common/uIcons.h"

#include <QFile>
#include <QGuiApplication>
#include <QIconEngine>
#include <QPainter>
#include <QPixmap>
#include <algorithm>
#include <stdexcept>

#include "gui/common/uTheme.h"

// The resources of a static library must be registered explicitly, outside every namespace.
static void RegisterIcons() {
  Q_INIT_RESOURCE(icons);
}

namespace {

constexpr auto kDotName = "dot";

// Draws at any size and scale, and in the scheme of that moment.
class TDotEngine : public QIconEngine {
 public:
  explicit TDotEngine(const QColor& colour) : FColour(colour) {}

  void paint(QPainter* painter, const QRect& rect, QIcon::Mode mode, QIcon::State /*state*/) override {
    QColor ink = InkOn(QGuiApplication::palette(), FColour);
    if (mode == QIcon::Disabled) ink.setAlphaF(0.4F);
    painter->setRenderHint(QPainter::Antialiasing);
    painter->setPen(Qt::NoPen);
    painter->setBrush(ink);
    const double radius = 0.3 * std::min(rect.width(), rect.height());
    painter->drawEllipse(QRectF(rect).center(), radius, radius);
  }
  QPixmap pixmap(const QSize& size, QIcon::Mode mode, QIcon::State state) override {
    QPixmap picture(size);
    picture.fill(Qt::transparent);
    QPainter painter(&picture);
    paint(&painter, picture.rect(), mode, state);
    return picture;
  }
  QString iconName() override { return kDotName; }
  [[nodiscard]] QIconEngine* clone() const override { return new TDotEngine(*this); }

 private:
  QColor FColour;
};

// Draws the icon of the scheme of that moment.
class TSchemeIconEngine : public QIconEngine {
 public:
  explicit TSchemeIconEngine(const QString& name) : FLight(Icon(name, false)), FDark(Icon(name, true)) {}

  void paint(QPainter* painter, const QRect& rect, QIcon::Mode mode, QIcon::State state) override {
    Shown().paint(painter, rect, Qt::AlignCenter, mode, state);
  }
  QPixmap pixmap(const QSize& size, QIcon::Mode mode, QIcon::State state) override {
    return Shown().pixmap(size, 1, mode, state);
  }
  QSize actualSize(const QSize& size, QIcon::Mode mode, QIcon::State state) override {
    return Shown().actualSize(size, mode, state);
  }
  [[nodiscard]] QIconEngine* clone() const override { return new TSchemeIconEngine(*this); }

 private:
  [[nodiscard]] const QIcon& Shown() const { return IsDark(QGuiApplication::palette()) ? FDark : FLight; }

  QIcon FLight;
  QIcon FDark;
};

}  // namespace

QIcon DotIcon(const QColor& colour) {
  return QIcon(new TDotEngine(colour));
}

bool IsDotIcon(const QIcon& icon) {
  return icon.name() == kDotName;
}

QIcon ProgramIcon() {
  RegisterIcons();
  return QIcon(":/shockscope.svg");
}

QIcon Icon(const QString& name) {
  return QIcon(new TSchemeIconEngine(name));
}

QIcon Icon(const QString& name, bool onDark) {
  return QIcon(IconFile(name, onDark));
}

QString IconFile(const QString& name, bool onDark) {
  RegisterIcons();
  QString path = QString(":/icons/%1/%2.svg").arg(onDark ? "dark" : "light", name);
  if (!QFile::exists(path)) throw std::logic_error("no such icon: " + name.toStdString());
  return path;
}
