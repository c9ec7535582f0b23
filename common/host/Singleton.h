#pragma once

#include "common/host/HostCalls.h"

#include <QMutex>
#include <QMutexLocker>
#include <QScopedPointer>
#include <QWaitCondition>

#include <atomic>
#include <new>
#include <thread>

namespace velm::detail {

/// Set at the end of a process that has lost threads together with the locks they held: destructors
/// may wait for such a lock, so the objects are left to the system.
inline bool leaveSingletonsToSystem = false;

/// Whether such objects have begun to go, at the end of the process or of the library: from then on
/// none may be asked for.
inline bool singletonsAreGone = false;

/// Creates one object on first use and destroys it when the library unloads. Meant as a
/// function-local static of an Instance(). Any number of threads may meet at get(): the object is
/// made once, and the test without the lock is an acquire load, so whoever sees the pointer sees
/// the finished object. Calls to the host wait until the object is there for everybody.
template<class T>
class Singleton
{
public:
    Singleton() = default;
    ~Singleton()
    {
        singletonsAreGone = true;
        if (leaveSingletonsToSystem)
            m_owner.take();
    }
    Q_DISABLE_COPY(Singleton)

    /// @p create makes the object; it is a lambda of the class, so that the constructor may be
    /// private.
    template<class Create>
    T* get(Create create)
    {
        return get(create, [](T&) {});
    }

    /// The same for an object that has much to do before it can be used. @p create does nothing
    /// that could lead out of the library; @p finish runs without the lock.
    /// Other threads wait for its end; the thread itself gets the unfinished object when what
    /// finish calls asks for it.
    template<class Create, class Finish>
    T* get(Create create, Finish finish)
    {
        T* object = m_object.load(std::memory_order_acquire);
        if (object)
            return object;
        const HostCallsLater afterwards;
        QMutexLocker lock(&m_mutex);
        if (m_finisher == std::this_thread::get_id())
            return m_owner.data();
        while (m_finisher != std::thread::id())
            m_finished.wait(&m_mutex);
        object = m_object.load(std::memory_order_acquire);
        if (object)
            return object;
        m_owner.reset(create());
        object = m_owner.data();
        m_finisher = std::this_thread::get_id();
        lock.unlock();
        try {
            finish(*object);
        } catch (const std::bad_alloc&) {
            // It is as far as it came; its operations tell what fails.
        }
        lock.relock();
        m_object.store(object, std::memory_order_release);
        m_finisher = std::thread::id();
        m_finished.wakeAll();
        return object;
    }

private:
    QMutex m_mutex;
    QWaitCondition m_finished;
    QScopedPointer<T> m_owner;
    std::atomic<std::thread::id> m_finisher{std::thread::id()};
    std::atomic<T*> m_object{nullptr};
};

}  // namespace velm::detail
