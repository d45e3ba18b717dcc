// Change signals and their subscriptions.
//
// `ChangeSignal` tells its subscribers that an object is about to change (it
// is sent before the new value is stored, so a subscriber that wants the new
// value schedules its work for later). `Published<Value>` holds a value and
// hands each subscriber the current value at once and every assigned value
// after. A `Subscription` ends when it is released.
//
// Main thread only; no locks. Sending is re-entrant: a handler may subscribe,
// end its own or another subscription, or send again.
#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <utility>

namespace orvik {

// Ends its subscription when released (or when `cancel` is called).
class Subscription {
public:
    Subscription() = default;
    explicit Subscription(std::function<void()> cancel) : cancel_(std::move(cancel)) {}
    Subscription(Subscription&& other) noexcept : cancel_(std::exchange(other.cancel_, nullptr)) {}
    Subscription& operator=(Subscription&& other) noexcept {
        if (this != &other) {
            cancel();
            cancel_ = std::exchange(other.cancel_, nullptr);
        }
        return *this;
    }
    Subscription(const Subscription&) = delete;
    Subscription& operator=(const Subscription&) = delete;
    ~Subscription() { cancel(); }

    void cancel() {
        if (auto cancel = std::exchange(cancel_, nullptr)) {
            cancel();
        }
    }
    bool isActive() const noexcept { return cancel_ != nullptr; }

private:
    std::function<void()> cancel_;
};

namespace detail {

// Handlers by subscription number; shared with the subscriptions so that a
// subscription outliving its signal ends harmlessly.
template <class... Args>
class Subscribers {
public:
    using Handler = std::function<void(const Args&...)>;

    std::uint64_t add(Handler handler) {
        const std::uint64_t id = nextID_++;
        handlers_.emplace(id, std::make_shared<const Handler>(std::move(handler)));
        return id;
    }
    void remove(std::uint64_t id) { handlers_.erase(id); }

    // Calls every handler subscribed when the send began and still
    // subscribed when its turn comes. Allocates nothing: sends happen on the
    // key path, once for every key that becomes a command.
    void send(const Args&... args) {
        const std::uint64_t firstLater = nextID_;  // handlers added meanwhile wait for the next send
        for (auto entry = handlers_.begin(); entry != handlers_.end() && entry->first < firstLater;) {
            const std::uint64_t id = entry->first;
            // Held for the call: the handler may end its own subscription.
            const std::shared_ptr<const Handler> handler = entry->second;
            (*handler)(args...);
            // Looked up afresh: the handler may have ended other subscriptions.
            entry = handlers_.upper_bound(id);
        }
    }

    std::size_t count() const noexcept { return handlers_.size(); }

private:
    std::map<std::uint64_t, std::shared_ptr<const Handler>> handlers_;
    std::uint64_t nextID_ = 1;
};

template <class... Args>
Subscription subscribeTo(const std::shared_ptr<Subscribers<Args...>>& subscribers,
                         typename Subscribers<Args...>::Handler handler) {
    const std::uint64_t id = subscribers->add(std::move(handler));
    return Subscription([weak = std::weak_ptr(subscribers), id] {
        if (auto alive = weak.lock()) alive->remove(id);
    });
}

}  // namespace detail

// "Something is about to change"; carries no value.
class ChangeSignal {
public:
    [[nodiscard]] Subscription subscribe(std::function<void()> handler) {
        return detail::subscribeTo(subscribers_, std::move(handler));
    }
    void send() { subscribers_->send(); }
    std::size_t subscriberCount() const noexcept { return subscribers_->count(); }

private:
    std::shared_ptr<detail::Subscribers<>> subscribers_ = std::make_shared<detail::Subscribers<>>();
};

// A value whose every assignment is told to the subscribers (equal values
// too; subscribers that want changes only compare for themselves).
template <class Value>
class Published {
public:
    explicit Published(Value initial) : value_(std::move(initial)) {}

    const Value& get() const noexcept { return value_; }

    // Subscribers see the new value before it is stored, as with the change
    // signal; `get()` answers the old value until every handler has run.
    void set(Value value) {
        subscribers_->send(value);
        value_ = std::move(value);
    }

    // The handler receives the current value at once, then every assignment.
    [[nodiscard]] Subscription subscribe(std::function<void(const Value&)> handler) {
        handler(value_);
        return detail::subscribeTo(subscribers_, std::move(handler));
    }

private:
    Value value_;
    std::shared_ptr<detail::Subscribers<Value>> subscribers_ = std::make_shared<detail::Subscribers<Value>>();
};

}  // namespace orvik
