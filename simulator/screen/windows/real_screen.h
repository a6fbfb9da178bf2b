// The screen of this machine, watched by the robot.
#pragma once

#include "simulator/screen/screen.h"
#include "simulator/screen/windows/robot.h"

#include <windows.h>

#include <memory>

namespace vellumo::screen
{

class RealScreen final : public Screen
{
public:
    // `anOperator` outlives the screen.
    explicit RealScreen(Operator& anOperator)
        : m_robot(anOperator)
    {
    }
    ~RealScreen() override;
    RealScreen(const RealScreen&) = delete;
    RealScreen& operator=(const RealScreen&) = delete;

    [[nodiscard]] Window* Topmost() override;
    void RefuseWindows() override;
    bool TakePicture(const std::filesystem::path& file) override;

private:
    Robot m_robot;
    std::unique_ptr<Window> m_top;
    HHOOK m_refusal = nullptr;
};

} // namespace vellumo::screen
