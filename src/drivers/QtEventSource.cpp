#include "drivers/QtEventSource.h"

#include <QAbstractEventDispatcher>
#include <QCoreApplication>
#include <QThread>
#include <QTimer>
#include <utility>

namespace oriolemark {

namespace {

QEventLoop::ProcessEventsFlags FlagsFor(UserInput input) {
  return input == UserInput::Served ? QEventLoop::AllEvents : QEventLoop::ExcludeUserInputEvents;
}

class QtAlarm : public Alarm {
 public:
  explicit QtAlarm(std::function<void()> ring) {
    timer_.setTimerType(Qt::PreciseTimer);
    // The connection owns the function, so it still exists if a ring destroys the alarm.
    QObject::connect(&timer_, &QTimer::timeout, [ring = std::move(ring)] { ring(); });
  }

  void Start(Milliseconds period) override { timer_.start(period); }
  void Stop() override { timer_.stop(); }

 private:
  QTimer timer_;
};

}  // namespace

void QtEventSource::ServePending(UserInput input) {
  ++turns_;
  QCoreApplication::processEvents(FlagsFor(input));
}

void QtEventSource::ServeNext(Milliseconds limit, UserInput input) {
  if (limit == Milliseconds::zero()) return ServePending(input);
  // The time-out is the event that ends the sleep. It needs no handler.
  QTimer alarmClock;
  if (limit > Milliseconds::zero()) {
    alarmClock.setTimerType(Qt::PreciseTimer);
    alarmClock.setSingleShot(true);
    alarmClock.start(limit);
  }
  ++turns_;
  QCoreApplication::processEvents(FlagsFor(input) | QEventLoop::WaitForMoreEvents);
}

void QtEventSource::Block(Milliseconds time) {
  if (time > Milliseconds::zero()) QThread::msleep(static_cast<unsigned long>(time.count()));
}

std::unique_ptr<Alarm> QtEventSource::MakeAlarm(std::function<void()> ring) {
  return std::make_unique<QtAlarm>(std::move(ring));
}

void QtEventSource::Wake() {
  auto* const application = QCoreApplication::instance();
  if (application == nullptr) return;
  auto* const dispatcher = QAbstractEventDispatcher::instance(application->thread());
  if (dispatcher != nullptr) dispatcher->wakeUp();
}

}  // namespace oriolemark
