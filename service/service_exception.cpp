#include "service/service_exception.h"

#include "host/fault.h"

#include <utility>

namespace vellumo::service
{

void ServiceExceptions::AddObject(std::shared_ptr<ServiceException> exception)
{
    m_entries.push_back(std::move(exception));
}

void ServiceExceptions::Add(std::string message, std::string code, std::string field, std::string value,
                            std::string fieldCode, std::string fieldMessage)
{
    AddObject(std::make_shared<ServiceException>(ServiceException{std::move(message),
                                                                  std::move(code),
                                                                  std::move(field),
                                                                  std::move(value),
                                                                  std::move(fieldCode),
                                                                  std::move(fieldMessage),
                                                                  {},
                                                                  {}}));
}

const std::shared_ptr<ServiceException>& ServiceExceptions::Item(std::size_t position) const
{
    if (position < 1 || position > m_entries.size())
    {
        throw host::Fault("L'elenco delle eccezioni non ha la posizione richiesta.");
    }
    return m_entries[position - 1];
}

} // namespace vellumo::service
