#pragma once

#include "Settings/DesktopExtension.h"

#include <utility>

namespace talmo::test {

class FakeDesktopExtension final : public DesktopExtension {
public:
    explicit FakeDesktopExtension(Status status)
        : m_status(std::move(status))
    {
    }

    Status status() const override { return m_status; }
    void refresh() override { ++refreshes; }
    void enable() override { ++enablings; }

    void setStatus(Status status) { publish(m_status, std::move(status)); }

    int refreshes = 0;
    int enablings = 0;

private:
    Status m_status;
};

} // namespace talmo::test
