#include "gui/platform/uPostedMessages.h"

#include <QCoreApplication>
#include <QEvent>
#include <utility>

#include "model/uReadFileThread.h"

namespace {

constexpr int kPauseMs = 40;
const auto kPosted = static_cast<QEvent::Type>(QEvent::registerEventType());

}  // namespace

TPostedMessages::TPostedMessages(std::function<void(const TMessage&)> handle, QObject* parent)
    : QObject(parent), FDeliver(std::move(handle)), FHandle(*this) {
  FPause.setSingleShot(true);
  FPause.setInterval(kPauseMs);
  connect(&FPause, &QTimer::timeout, this, &TPostedMessages::Deliver);
}

void TPostedMessages::Receive(const TMessage& message) noexcept {
  const std::lock_guard lock(FMutex);
  const bool isProgress = message.wParam == kReadProgress;
  if (isProgress) {
    FProgress = message;
    if (FPosted) return;
  } else {
    FEnds.push_back(message);
  }
  FPosted = true;
  QCoreApplication::postEvent(this, new QEvent(kPosted));
}

bool TPostedMessages::event(QEvent* event) {
  if (event->type() != kPosted) return QObject::event(event);
  Deliver();
  return true;
}

void TPostedMessages::Deliver() {
  std::optional<TMessage> progress;
  std::deque<TMessage> ends;
  {
    const std::lock_guard lock(FMutex);
    progress = std::exchange(FProgress, std::nullopt);
    ends.swap(FEnds);
    FPosted = progress.has_value();
  }
  if (progress) {
    FPause.start();
    FDeliver(*progress);
  }
  for (const TMessage& message : ends) FDeliver(message);
}
