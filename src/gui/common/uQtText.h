// Between the program's UTF-8 and Qt's strings and paths.
#pragma once

#include <QString>
#include <string>
#include <string_view>

inline QString QtText(std::string_view utf8) {
  return QString::fromUtf8(utf8.data(), static_cast<qsizetype>(utf8.size()));
}

inline std::string Utf8(const QString& text) {
  return text.toStdString();
}
