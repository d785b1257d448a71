// The two logos: 0 the company's, 1 the report's. Each is the built-in picture until a file is loaded. Main thread
// only.
#pragma once

#include <QByteArray>
#include <QImage>
#include <QObject>
#include <array>
#include <cstddef>
#include <filesystem>

class TLogos : public QObject {
  Q_OBJECT

 public:
  enum TLogo : std::size_t { kCompany, kReport, kCount };
  static constexpr int kMaxSide = 4000;           // pixels
  static constexpr qint64 kMaxFile = 10'000'000;  // bytes

  explicit TLogos(QObject* parent);

  // Never null. For paper: dark on white or on nothing.
  [[nodiscard]] const QImage& Image(std::size_t index) const { return FLogos.at(index).Image; }

  // At the start. Throws std::runtime_error if the file is not a picture or too large; the logo stays built-in, and
  // Save does not overwrite the file until the logo is replaced.
  void Load(std::size_t index, const std::filesystem::path& file);
  // By the user, with a PNG, JPEG, BMP or GIF file. Throws std::runtime_error and changes nothing if it is unusable.
  void Replace(std::size_t index, const std::filesystem::path& file);
  // As PNG; a loaded PNG is written unchanged. Throws if the file cannot be written.
  void Save(std::size_t index, const std::filesystem::path& file) const;

 signals:
  void Changed(std::size_t index);

 private:
  struct TPicture {
    QImage Image;
    QByteArray Png;  // what Save writes
    bool FileIsBroken = false;
  };
  static TPicture BuiltIn(std::size_t index);
  static TPicture Read(const std::filesystem::path& file);

  std::array<TPicture, kCount> FLogos;
};
