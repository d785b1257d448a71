// Between the program's UTF-8 and Qt's strings and paths.
#pragma once

#include <QString>
#include <string>
#include <string_view>

#include "base/uText.h"

inline QString QtText(std::string_view utf8) {
  return QString::fromUtf8(utf8.data(), static_cast<qsizetype>(utf8.size()));
}

// A text of a recording for people: without control characters, at most `longest` characters and "…".
inline QString ShownText(std::string_view utf8, qsizetype longest) {
  QString text = QtText(Printable(utf8));
  if (text.size() <= longest) return text;
  text.truncate(text.at(longest - 1).isHighSurrogate() ? longest - 1 : longest);
  return text + "…";
}

inline std::string Utf8(const QString& text) {
  return text.toStdString();
}
