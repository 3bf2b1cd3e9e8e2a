#pragma once
// kel::view_ptr<T>: a non-owning pointer that reads null once the object it
// observes is destroyed (like QPointer). Observable objects hand out a life
// token; the pointer keeps only a weak reference to it.

#include "OrvCoreExport.h"

#include <memory>

namespace kel {

// Base of objects that view pointers may observe.
class ORV_CORE_EXPORT Observable {
public:
    Observable() : m_alive(std::make_shared<char>(0)) {}
    // A copy is a new object with a life of its own.
    Observable(const Observable&) : Observable() {}
    Observable& operator=(const Observable&) { return *this; } // NOLINT(bugprone-unhandled-self-assignment): keeps its own token
    ~Observable() = default;

    std::weak_ptr<void> lifeToken() const { return m_alive; }

private:
    std::shared_ptr<char> m_alive;
};

template <class T>
class view_ptr {
public:
    view_ptr() = default;
    explicit view_ptr(T* object)
        : m_object(object)
        , m_alive(object ? object->lifeToken() : std::weak_ptr<void>())
    {
    }

    T* get() const { return m_alive.expired() ? nullptr : m_object; }
    T* operator->() const { return get(); }
    T& operator*() const { return *get(); }
    explicit operator bool() const { return get() != nullptr; }
    void reset() { *this = view_ptr(); }

private:
    T* m_object = nullptr;
    std::weak_ptr<void> m_alive;
};

} // namespace kel
