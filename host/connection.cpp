#include "host/connection.h"

#include "host/fault.h"

namespace vellumo::host
{

Transaction::Transaction(Connection& connection)
    : m_connection(connection)
{
    m_open = Trap(false,
                  [&]
                  {
                      m_connection.BeginTransaction();
                      return true;
                  });
}

Transaction::~Transaction()
{
    if (m_open)
    {
        PassOver([&] { m_connection.RollbackTransaction(); });
    }
}

void Transaction::Commit()
{
    if (m_open)
    {
        m_connection.CommitTransaction();
        m_open = false;
    }
}

} // namespace vellumo::host
