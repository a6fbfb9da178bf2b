// An installation in which nothing is wrong, made anew for each way of breaking it, and what the diagnosis then says.
#pragma once

#include "diagnosi/checks/checks.h"
#include "tests/support/installation.h"

#include <functional>
#include <string>
#include <vector>

namespace vellumo::tests
{

class WholeInstallation : public Installation
{
public:
    WholeInstallation();
    virtual ~WholeInstallation() = default;
    WholeInstallation(const WholeInstallation&) = delete;
    WholeInstallation& operator=(const WholeInstallation&) = delete;

    // A database with the host's tables and views, all in one file; the diagnosis is told of it. Each change is made to
    // the statements before they are executed: the first text becomes the second.
    struct Change
    {
        std::string from;
        std::string to;
    };
    void MakeDatabase(const std::vector<Change>& changes = {});

    void Remove(const std::string& name) const;
    // In one of its files, the first text becomes the second. Fails when it is not there.
    void Replace(const std::string& name, const std::string& from, const std::string& to) const;

    [[nodiscard]] std::vector<diagnosi::Checked> Diagnose();

    diagnosi::Databases databases;
};

// One way of breaking it: which check must say what, and what to do about it.
struct Broken
{
    const char* what;
    std::function<void(WholeInstallation&)> breakIt;
    diagnosi::State state;
    const char* check; // how its name begins
    const char* found; // parts of the texts
    const char* remedy;
};

// Each check that is not ok, with its texts; "" for a whole installation.
[[nodiscard]] std::string Complaints(const std::vector<diagnosi::Checked>& checked);

// Breaks a whole installation so, and requires that the row's check says what the row does. Others may complain
// besides.
void Verify(const Broken& row, WholeInstallation& installation);

} // namespace vellumo::tests
