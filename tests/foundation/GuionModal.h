#pragma once

// Drives a modal dialog that the code under test opens and waits for: the action runs on the
// dialog as soon as it is the active modal window, from within its own event loop.

#include <QApplication>
#include <QDialog>
#include <QTimer>
#include <functional>

namespace korven::test {

template <class T> class AlAbrir {
public:
    explicit AlAbrir(std::function<void(T*)> accion) : accion_(std::move(accion)) {
        timer_.setInterval(0);
        QObject::connect(&timer_, &QTimer::timeout, [this] {
            T* d = qobject_cast<T*>(QApplication::activeModalWidget());
            if (!d)
                return;
            timer_.stop();
            ++veces_;
            accion_(d);
        });
        timer_.start();
    }
    // Times the dialog opened (and the action ran).
    int veces() const { return veces_; }

private:
    std::function<void(T*)> accion_;
    QTimer timer_;
    int veces_ = 0;
};

} // namespace korven::test
