#pragma once

#include <QtGlobal>

#include <functional>
#include <memory>
#include <utility>

namespace talmo {

/// A process-wide instance, created on first use by the registered factory. Main thread only.
template <typename T>
class SharedInstance {
public:
    using Factory = std::function<std::shared_ptr<T>()>;

    void setFactory(Factory factory) { m_factory = std::move(factory); }

    const std::shared_ptr<T> &get()
    {
        if (!m_instance) {
            Q_ASSERT_X(m_factory, "SharedInstance::get", "no factory was registered");
            m_instance = m_factory();
        }
        return m_instance;
    }

    void release() { m_instance.reset(); }

private:
    Factory m_factory;
    std::shared_ptr<T> m_instance;
};

} // namespace talmo
