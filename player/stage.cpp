#include "player/stage.h"

namespace vellumo::player
{
namespace
{

norda::Practice CopyOf(const std::filesystem::path& model, const std::filesystem::path& folder,
                       const std::string& server)
{
    norda::Practice practice(folder, server);
    if (!model.empty())
    {
        practice.CopyFrom(model);
    }
    return practice;
}

} // namespace

Stage::Stage(const std::filesystem::path& model, const std::filesystem::path& folder, const std::string& server,
             screen::Operator& anOperator)
    : m_practice(CopyOf(model, folder, server))
    , m_target(MakeTarget(anOperator, folder))
    , m_own(m_practice.OpenFast())
    , m_host(*m_target.workstation, m_practice.OpenFast(), m_network, 1)
{
    m_network.People().LoadSeed();
    m_practice.Register(Machine());
}

} // namespace vellumo::player
