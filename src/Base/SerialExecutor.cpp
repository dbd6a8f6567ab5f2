#include "Base/SerialExecutor.h"

#include "Base/Log.h"

#include <QMetaObject>
#include <QObject>
#include <QThread>

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
      m_context(new QObject)
{
    if (m_thread != nullptr) {
        m_context->moveToThread(m_thread);
        m_thread->start();
    }
}

SerialExecutor::~SerialExecutor()
{
    if (m_thread == nullptr) {
        // The last reference may go on another thread; the context must not be deleted under its own loop's feet.
        if (isCurrentThread()) {
            delete m_context;
        } else {
            m_context->deleteLater();
        }
        return;
    }
    if (isCurrentThread()) {
        // The last reference was dropped by work of our own: the thread ends after this piece, and nobody can join it.
        QObject::connect(m_thread, &QThread::finished, m_thread, &QObject::deleteLater);
        m_context->deleteLater();
        m_thread->quit();
        return;
    }
    m_thread->requestInterruption();
    m_thread->quit();
    m_thread->wait();
    delete m_context;
    delete m_thread;
}

bool SerialExecutor::isCurrentThread() const
{
    return m_context->thread() == QThread::currentThread();
}

void SerialExecutor::post(std::function<void()> work)
{
    QMetaObject::invokeMethod(
        m_context,
        [work = std::move(work)] {
            // Set when the executor is going: what it has not got to is dropped.
            if (!QThread::currentThread()->isInterruptionRequested()) {
                runLogged(work);
            }
        },
        Qt::QueuedConnection);
}

} // namespace talmo
