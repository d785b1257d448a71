#include "gui/platform/uPostedMessages.h"

#include <QCoreApplication>
#include <QEvent>
#include <chrono>
#include <memory>
#include <new>
#include <thread>
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
    FEnd = message;
  }
  FPosted = true;
  Post();
}

// A lost end message would leave the window waiting for ever: without memory for the event the thread waits for some.
void TPostedMessages::Post() noexcept {
  for (;;) {
    try {
      QCoreApplication::postEvent(this, std::make_unique<QEvent>(kPosted).release());
      return;
    } catch (const std::bad_alloc&) {
      std::this_thread::sleep_for(std::chrono::milliseconds(10));
    }
  }
}

bool TPostedMessages::event(QEvent* event) {
  if (event->type() != kPosted) return QObject::event(event);
  Deliver();
  return true;
}

void TPostedMessages::Deliver() {
  std::optional<TMessage> progress;
  std::optional<TMessage> end;
  {
    const std::lock_guard lock(FMutex);
    progress = std::exchange(FProgress, std::nullopt);
    end = std::exchange(FEnd, std::nullopt);
    FPosted = progress.has_value();
  }
  if (progress) {
    FPause.start();
    FDeliver(*progress);
  }
  if (end) FDeliver(*end);
}
