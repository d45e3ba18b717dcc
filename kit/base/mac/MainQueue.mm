// MainThread over the main dispatch queue; SerialQueue over a serial
// dispatch queue.
#import <Foundation/Foundation.h>
#include <dispatch/dispatch.h>

#include <cstdint>
#include <map>
#include <memory>
#include <utility>

#include "OrvikKitMac/BaseAdapters.h"

namespace orvik::mac {

namespace {

class MainQueue final : public MainThread {
public:
    ~MainQueue() override {
        for (const auto& entry : timers_->sources) dispatch_source_cancel(entry.second);
        timers_->sources.clear();
    }

    void post(Task task) override {
        const auto shared = std::make_shared<Task>(std::move(task));
        dispatch_async(dispatch_get_main_queue(), ^{
          (*shared)();
        });
    }

    TimerID postAfter(Duration delay, Duration leeway, Task task) override {
        assertOnMainThread(*this);
        const TimerID timer = timers_->next++;
        dispatch_source_t source = dispatch_source_create(DISPATCH_SOURCE_TYPE_TIMER, 0, 0, dispatch_get_main_queue());
        const auto shared = std::make_shared<Task>(std::move(task));
        const std::weak_ptr<Timers> weakTimers = timers_;
        dispatch_source_set_event_handler(source, ^{
          const auto timers = weakTimers.lock();
          if (!timers) return;
          const auto found = timers->sources.find(timer);
          if (found == timers->sources.end()) return;
          dispatch_source_cancel(found->second);
          timers->sources.erase(found);
          (*shared)();
        });
        // Started from the default dispatch clock (mach_absolute_time): it
        // only moves forward and setting the date does not touch it, while a
        // timer started from the wall clock (dispatch_walltime) would wait
        // until the clock caught up again after being set back. It stands
        // still while the Mac sleeps; the app's wake observer covers that.
        // (The clock that keeps counting through sleep has no public dispatch
        // constant: DISPATCH_MONOTONICTIME_NOW is libdispatch's private API.)
        dispatch_source_set_timer(source, dispatch_time(DISPATCH_TIME_NOW, wholeNanoseconds(delay)),
                                  DISPATCH_TIME_FOREVER, static_cast<std::uint64_t>(wholeNanoseconds(leeway)));
        timers_->sources.emplace(timer, source);
        dispatch_resume(source);
        return timer;
    }

    void cancel(TimerID timer) override {
        assertOnMainThread(*this);
        const auto found = timers_->sources.find(timer);
        if (found == timers_->sources.end()) return;
        dispatch_source_cancel(found->second);
        timers_->sources.erase(found);
    }

    bool isCurrent() const override { return NSThread.isMainThread; }

private:
    struct Timers {
        std::map<TimerID, dispatch_source_t> sources;
        TimerID next = 1;
    };
    // Shared with the timers' handlers, which hold it weakly.
    std::shared_ptr<Timers> timers_ = std::make_shared<Timers>();
};

class DispatchSerialQueue final : public SerialQueue {
public:
    explicit DispatchSerialQueue(dispatch_queue_t queue) : queue_(queue) {}

    void async(WorkItem work) override {
        const auto shared = std::make_shared<WorkItem>(std::move(work));
        dispatch_async(queue_, ^{
          (*shared)();
        });
    }

private:
    dispatch_queue_t queue_;
};

}  // namespace

std::shared_ptr<MainThread> makeMainQueue() { return std::make_shared<MainQueue>(); }

std::shared_ptr<SerialQueue> makeSerialQueue(const std::string& label) {
    dispatch_queue_attr_t attributes =
        dispatch_queue_attr_make_with_autorelease_frequency(DISPATCH_QUEUE_SERIAL, DISPATCH_AUTORELEASE_FREQUENCY_WORK_ITEM);
    attributes = dispatch_queue_attr_make_with_qos_class(attributes, QOS_CLASS_USER_INITIATED, 0);
    return std::make_shared<DispatchSerialQueue>(dispatch_queue_create(label.c_str(), attributes));
}

}  // namespace orvik::mac
