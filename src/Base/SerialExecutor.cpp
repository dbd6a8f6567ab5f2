#include "Base/SerialExecutor.h"

#include "Base/Log.h"
#include "Base/ThreadSanitizer.h"

#include <QCoreApplication>
#include <QEvent>
#include <QObject>
#include <QThread>

#include <utility>

namespace talmo {

namespace {

void runLogged(const std::function<void()> &work)
{
    try {
        work();
    } catch (...) {
        generalLog().error("unexpected error: %s", {localizedDescription(std::current_exception())});
    }
}

/// A work item posted to the executor's thread.
class WorkEvent final : public QEvent {
public:
    WorkEvent(std::function<void()> work, const QObject *context)
        : QEvent(kind()),
          m_work(std::move(work)),
          m_context(context)
    {
        ThreadSanitizer::release(this);
    }
    ~WorkEvent() override
    {
        ThreadSanitizer::acquire(this); // An item that never ran is destroyed by the executor's owner.
        m_work = nullptr;
        ThreadSanitizer::release(m_context);
    }
    WorkEvent(const WorkEvent &) = delete;
    WorkEvent &operator=(const WorkEvent &) = delete;

    static Type kind()
    {
        static const Type type = static_cast<Type>(registerEventType());
        return type;
    }

    void run() const
    {
        ThreadSanitizer::acquire(this);
        // Set while the executor is being destroyed: pending work is dropped.
        if (!QThread::currentThread()->isInterruptionRequested()) {
            runLogged(m_work);
        }
    }

private:
    std::function<void()> m_work;
    const QObject *m_context;
};

/// Lives on the executor's thread and runs the work posted to it.
class Context final : public QObject {
public:
    bool event(QEvent *event) override
    {
        if (event->type() != WorkEvent::kind()) {
            return QObject::event(event);
        }
        static_cast<const WorkEvent *>(event)->run();
        return true;
    }
};

} // namespace

std::shared_ptr<SerialExecutor> SerialExecutor::onNewThread(const QString &name)
{
    auto *thread = new QThread;
    thread->setObjectName(name);
    return std::shared_ptr<SerialExecutor>(new SerialExecutor(thread));
}

std::shared_ptr<SerialExecutor> SerialExecutor::onCurrentThread()
{
    return std::shared_ptr<SerialExecutor>(new SerialExecutor(nullptr));
}

SerialExecutor::SerialExecutor(QThread *thread)
    : m_thread(thread),
      m_context(new Context)
{
    if (m_thread != nullptr) {
        m_context->moveToThread(m_thread);
        m_thread->start();
    }
}

SerialExecutor::~SerialExecutor()
{
    if (m_thread == nullptr) {
        // The last reference may be released on another thread, where deleting the context would race with its event
        // loop.
        if (isCurrentThread()) {
            delete m_context;
        } else {
            m_context->deleteLater();
        }
        return;
    }
    if (isCurrentThread()) {
        // The executor's own work released the last reference: the thread ends after this item, and nothing can join
        // it.
        QObject::connect(m_thread, &QThread::finished, m_thread, &QObject::deleteLater);
        m_context->deleteLater();
        m_thread->quit();
        return;
    }
    m_thread->requestInterruption();
    m_thread->quit();
    m_thread->wait();
    ThreadSanitizer::acquire(m_context);
    delete m_context;
    delete m_thread;
}

bool SerialExecutor::isCurrentThread() const
{
    return m_context->thread() == QThread::currentThread();
}

void SerialExecutor::post(std::function<void()> work)
{
    QCoreApplication::postEvent(m_context, new WorkEvent(std::move(work), m_context));
}

} // namespace talmo
