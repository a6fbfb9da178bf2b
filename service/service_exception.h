// One error or warning of a SISS reply, and the list of them.
#pragma once

#include <cstddef>
#include <memory>
#include <string>
#include <vector>

namespace vellumo::service
{

struct ServiceException;

// In the order of the reply.
class ServiceExceptions
{
public:
    void AddObject(std::shared_ptr<ServiceException> exception);
    void Add(std::string message, std::string code, std::string field, std::string value, std::string fieldCode,
             std::string fieldMessage);

    [[nodiscard]] std::size_t Count() const noexcept { return m_entries.size(); }
    // Positions count from 1. Faults outside.
    [[nodiscard]] const std::shared_ptr<ServiceException>& Item(std::size_t position) const;

    [[nodiscard]] auto begin() const noexcept { return m_entries.begin(); }
    [[nodiscard]] auto end() const noexcept { return m_entries.end(); }

private:
    std::vector<std::shared_ptr<ServiceException>> m_entries;
};

// What the reply does not carry stays empty.
struct ServiceException
{
    std::string Message;
    std::string Code;
    std::string Field;
    std::string Value;
    std::string FieldCode;
    std::string FieldMessage;
    // Details of a failure.
    ServiceExceptions Exceptions;
    ServiceExceptions Warnings;
};

} // namespace vellumo::service
