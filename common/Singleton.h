#pragma once

#include <QMutex>
#include <QMutexLocker>
#include <QScopedPointer>

#include <atomic>

namespace velm::detail {

/// Set at the end of a process that has lost threads together with the locks they held: destructors
/// may wait for such a lock, so the objects are left to the system.
inline bool leaveSingletonsToSystem = false;

/// Creates one object on first use and destroys it when the library unloads. Meant as a
/// function-local static of an Instance(). Any number of threads may meet at get(): the object is
/// made once, and the test without the lock is an acquire load, so whoever sees the pointer sees
/// the finished object.
template<class T>
class Singleton
{
public:
    Singleton() = default;
    ~Singleton()
    {
        if (leaveSingletonsToSystem)
            m_owner.take();
    }
    Q_DISABLE_COPY(Singleton)

    /// @p create makes the object; it is a lambda of the class, so that the constructor may be
    /// private.
    template<class Create>
    T* get(Create create)
    {
        T* object = m_object.load(std::memory_order_acquire);
        if (object)
            return object;
        const QMutexLocker lock(&m_mutex);
        object = m_object.load(std::memory_order_acquire);
        if (!object) {
            m_owner.reset(create());
            object = m_owner.data();
            m_object.store(object, std::memory_order_release);
        }
        return object;
    }

private:
    QMutex m_mutex;
    QScopedPointer<T> m_owner;
    std::atomic<T*> m_object{nullptr};
};

}  // namespace velm::detail
