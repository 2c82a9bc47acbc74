#include "drivers/ShownText.h"

namespace oriolemark {
namespace {

constexpr qsizetype kHead = 400;
constexpr qsizetype kEnd = 100;

}  // namespace

QString Shortened(const QString& text) {
  if (text.size() <= kHead + kEnd) return text;
  return text.first(kHead) + "..." + text.last(kEnd);
}

}  // namespace oriolemark
