// Plays a plan from the opening of the session to the next start of the host program, and judges it.
#pragma once

#include "tests/life/outside.h"

#include <filesystem>
#include <string>

namespace vellumo::life
{

// The host program's folders of this process: one with the project's request templates, without most of their values,
// and one whose templates have no place for items either.
class Programs
{
public:
    explicit Programs(const std::filesystem::path& templates);
    ~Programs();
    Programs(const Programs&) = delete;
    Programs& operator=(const Programs&) = delete;

    // As the settings have it.
    [[nodiscard]] std::string Folder(bool brokenTemplates) const;
    [[nodiscard]] std::filesystem::path Traces(bool brokenTemplates) const;

private:
    std::filesystem::path m_folder;
};

// `outside` lies in shared memory. What was found is in its violations.
void Play(const Plan& plan, Outside& outside, const Programs& programs);

} // namespace vellumo::life
