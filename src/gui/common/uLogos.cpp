#include "gui/common/uLogos.h"

#include <QBuffer>
#include <QFile>
#include <QFont>
#include <QImageReader>
#include <QPainter>
#include <QPainterPath>
#include <algorithm>
#include <stdexcept>

#include "base/uFiles.h"
#include "gui/common/uQtText.h"
#include "platform/uSafeFile.h"

namespace fs = std::filesystem;

namespace {

QByteArray AsPng(const QImage& image) {
  QByteArray png;
  QBuffer buffer(&png);
  buffer.open(QIODevice::WriteOnly);
  if (!image.save(&buffer, "PNG")) throw std::runtime_error("The picture cannot be written as PNG.");
  return png;
}

}  // namespace

TLogos::TLogos(QObject* parent) : QObject(parent) {
  for (std::size_t i = 0; i < kCount; ++i) FLogos[i] = BuiltIn(i);
}

// A word beside a bar.
TLogos::TPicture TLogos::BuiltIn(std::size_t index) {
  constexpr QSize kSize(480, 120);
  const QColor bar(index == kCompany ? 0x1F4E79 : 0xC0504D);
  QImage image(kSize, QImage::Format_ARGB32);
  image.fill(Qt::transparent);
  QPainter painter(&image);
  painter.setRenderHint(QPainter::Antialiasing);
  painter.fillRect(QRect(0, 10, 14, 100), bar);
  QFont font;
  font.setPixelSize(72);
  font.setBold(true);
  QPainterPath word;
  word.addText(0, 0, font, index == kCompany ? "Korvex" : "ShockScope");
  const QRectF ink = word.boundingRect();
  const QRectF room(36, 20, kSize.width() - 40, kSize.height() - 40);
  const double zoom = std::min({1.0, room.width() / ink.width(), room.height() / ink.height()});
  painter.translate(room.left(), room.center().y());
  painter.scale(zoom, zoom);
  painter.translate(-ink.left(), -ink.center().y());
  painter.fillPath(word, QColor(0x262626));
  painter.end();
  return {image, AsPng(image), false};
}

// Size and kind are known before anything is decoded.
TLogos::TPicture TLogos::Read(const fs::path& file) {
  if (!fs::is_regular_file(file)) throw std::runtime_error("This is no file.");
  QFile source(QtText(Utf8FromPath(file)));
  if (!source.open(QIODevice::ReadOnly)) throw std::runtime_error("The file cannot be read.");
  QByteArray bytes = source.read(kMaxFile + 1);
  if (bytes.size() > kMaxFile) throw std::runtime_error("The picture is larger than 10 MB.");
  QBuffer buffer(&bytes);
  buffer.open(QIODevice::ReadOnly);
  QImageReader reader(&buffer);
  const QByteArray kind = QImageReader::imageFormat(&buffer);
  if (kind != "png" && kind != "jpeg" && kind != "bmp" && kind != "gif") {
    throw std::runtime_error("This is no picture in PNG, JPEG, BMP or GIF format.");
  }
  const QSize size = reader.size();
  if (size.width() > kMaxSide || size.height() > kMaxSide) {
    throw std::runtime_error("The picture has more than 4000 pixels a side.");
  }
  const QImage image = size.isEmpty() ? QImage() : reader.read();
  if (image.isNull()) throw std::runtime_error("The picture is damaged.");
  return {image, kind == "png" ? bytes : AsPng(image), false};
}

void TLogos::Load(std::size_t index, const fs::path& file) {
  try {
    FLogos.at(index) = Read(file);
  } catch (...) {
    FLogos.at(index) = BuiltIn(index);
    FLogos.at(index).FileIsBroken = true;
    emit Changed(index);
    throw;
  }
  emit Changed(index);
}

void TLogos::Replace(std::size_t index, const fs::path& file) {
  FLogos.at(index) = Read(file);
  emit Changed(index);
}

void TLogos::Save(std::size_t index, const fs::path& file) const {
  const TPicture& logo = FLogos.at(index);
  if (logo.FileIsBroken) return;
  SaveFile(file, {logo.Png.constData(), static_cast<std::size_t>(logo.Png.size())});
}
