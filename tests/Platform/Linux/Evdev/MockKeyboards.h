#pragma once

#include <QByteArray>
#include <QString>

#include <linux/input.h>

#include <map>
#include <memory>
#include <mutex>
#include <set>

typedef struct _UMockdevIoctlBase UMockdevIoctlBase;
typedef struct _UMockdevIoctlClient UMockdevIoctlClient;
typedef struct _UMockdevTestbed UMockdevTestbed;

namespace talmo::test {

/// Keyboards in a machine that has no others, for a program that runs under umockdev.
class MockKeyboards {
public:
    MockKeyboards();
    ~MockKeyboards();
    MockKeyboards(const MockKeyboards &) = delete;
    MockKeyboards &operator=(const MockKeyboards &) = delete;

    void plugIn(int keyboard);
    /// One whose device cannot be opened.
    void plugInUnreadable(int keyboard);
    void unplug(int keyboard);

    void press(int keyboard, int code) { move(keyboard, code, 1); }
    void repeat(int keyboard, int code) { move(keyboard, code, 2); }
    void release(int keyboard, int code) { move(keyboard, code, 0); }
    /// The key is up now, but the kernel's queue was full.
    void dropRelease(int keyboard, int code);

private:
    struct Keyboard;

    static int answer(UMockdevIoctlBase *, UMockdevIoctlClient *client, void *keyboard);
    void add(int keyboard, const QByteArray &node);
    void move(int keyboard, int code, int value);

    UMockdevTestbed *m_testbed;
    std::map<int, std::unique_ptr<Keyboard>> m_keyboards;
};

} // namespace talmo::test
