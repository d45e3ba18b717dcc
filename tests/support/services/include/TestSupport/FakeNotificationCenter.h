// A notification centre that delivers synchronously, on the caller's thread,
// to the observers of the posted name in the order they were added. It
// records the delivery each observer asked for (and delivers every one at
// once).
#pragma once

#include <cstddef>
#include <map>
#include <string>
#include <utility>

#include "OrvikKit/Notifications.h"

namespace testsupport {

class FakeNotificationCenter final : public orvik::NotificationCenter {
public:
    Token addObserver(std::string name, Handler handler, orvik::Delivery delivery) override {
        const Token token = nextToken_++;
        observers_.emplace(token, Observer{std::move(name), std::move(handler), delivery});
        return token;
    }
    void removeObserver(Token token) override { observers_.erase(token); }

    void post(const orvik::Notification& notification) {
        std::map<Token, Observer> snapshot = observers_;
        for (const auto& [token, observer] : snapshot) {
            if (observer.name == notification.name && observers_.contains(token)) observer.handler(notification);
        }
    }

    std::size_t observerCount() const noexcept { return observers_.size(); }
    std::size_t observerCount(const std::string& name) const {
        std::size_t count = 0;
        for (const auto& entry : observers_) count += entry.second.name == name ? 1u : 0u;
        return count;
    }
    // How many observers of `name` asked for `delivery`.
    std::size_t observerCount(const std::string& name, orvik::Delivery delivery) const {
        std::size_t count = 0;
        for (const auto& entry : observers_) {
            count += entry.second.name == name && entry.second.delivery == delivery ? 1u : 0u;
        }
        return count;
    }

private:
    struct Observer {
        std::string name;
        Handler handler;
        orvik::Delivery delivery;
    };
    std::map<Token, Observer> observers_;
    Token nextToken_ = 1;
};

}  // namespace testsupport
