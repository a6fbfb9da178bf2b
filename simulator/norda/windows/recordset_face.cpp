#include "simulator/norda/windows/recordset_face.h"

#include "host/fault.h"
#include "platform/windows/adapters/host_fault.h"
#include "platform/windows/adapters/host_names.h"
#include "platform/windows/system/text.h"
#include "simulator/norda/strict_server.h"
#include "simulator/norda/windows/dispatch_face.h"

namespace vellumo::norda
{
namespace
{

using windows::ComPtr;
using windows::Variant;
namespace names = windows::names;

// The numbers and texts that ADO reports.
constexpr std::int32_t objectClosed = static_cast<std::int32_t>(0x800A0E78);
constexpr std::int32_t noCurrentRow = static_cast<std::int32_t>(0x800A0BCD);
constexpr std::int32_t itemNotFound = static_cast<std::int32_t>(0x800A0CC1);

// Shared by the recordset and its fields, which stay valid after it was closed but then return nothing.
struct Result
{
    std::unique_ptr<host::Recordset> rows;

    [[nodiscard]] host::Recordset& Open() const
    {
        if (!rows)
        {
            throw host::Fault("Operazione non consentita se l'oggetto è chiuso.", objectClosed);
        }
        return *rows;
    }

    [[nodiscard]] host::Recordset& OnARow() const
    {
        if (Open().IsAtEnd())
        {
            throw host::Fault("BOF o EOF è True oppure il record corrente è stato eliminato.", noCurrentRow);
        }
        return *rows;
    }
};

VARTYPE VariantTypeOf(SqlType type)
{
    switch (type)
    {
    case SqlType::TinyInt:
        return VT_UI1;
    case SqlType::SmallInt:
        return VT_I2;
    case SqlType::BigInt:
        return VT_I8;
    case SqlType::Decimal:
        return VT_DECIMAL;
    case SqlType::Money:
        return VT_CY;
    case SqlType::Real:
        return VT_R4;
    case SqlType::Float:
        return VT_R8;
    case SqlType::RowVersion:
        return VT_ARRAY | VT_UI1;
    default:
        return VT_EMPTY; // as the value is
    }
}

// The value in the type in which ADO gives such a column.
Variant Typed(SqlType type, const host::Value& value)
{
    const VARTYPE wanted = VariantTypeOf(type);
    Variant result(value);
    if (wanted == (VT_ARRAY | VT_UI1))
    {
        constexpr ULONG rowVersionBytes = 8;
        VARIANT* const bytes = result.Put();
        V_ARRAY(bytes) = SafeArrayCreateVector(VT_UI1, 0, rowVersionBytes);
        V_VT(bytes) = wanted;
    }
    else if (wanted != VT_EMPTY && !value.IsNull())
    {
        Variant typed;
        windows::ThrowIfFailed(VariantChangeType(typed.Put(), const_cast<VARIANT*>(&result.Get()), 0, wanted),
                               "VariantChangeType");
        return typed;
    }
    return result;
}

Variant ValueOf(const host::Recordset& rows, std::size_t column)
{
    const auto* const typed = dynamic_cast<const TypedRecordset*>(&rows);
    return Typed(typed != nullptr ? typed->TypeOf(column) : SqlType::Plain, rows.Read(column));
}

class FieldFace final : public DispatchFace
{
public:
    FieldFace(std::shared_ptr<Result> result, std::size_t column)
        : DispatchFace(names::field::self)
    {
        AddMember(names::field::name,
                  [result, column](const Arguments&) { return Variant::Text(result->Open().ColumnName(column)); });
        AddMember(names::field::value,
                  [result, column](const Arguments&) { return ValueOf(result->OnARow(), column); });
        SetDefault(names::field::value);
    }
};

class FieldsFace final : public DispatchFace
{
public:
    explicit FieldsFace(std::shared_ptr<Result> result)
        : DispatchFace(names::fields::self)
        , m_result(std::move(result))
    {
        AddMember(names::fields::count, [this](const Arguments&)
                  { return Variant(host::Value(static_cast<std::int32_t>(m_result->Open().ColumnCount()))); });
        AddMember(names::fields::item, [this](const Arguments& arguments)
                  { return Variant(MakeFace<FieldFace>(m_result, ColumnOf(arguments.At(0))).Get()); });
        SetDefault(names::fields::item);
    }

private:
    std::size_t ColumnOf(const VARIANT& index) const
    {
        const host::Recordset& rows = m_result->Open();
        const host::Value wanted = windows::ToValue(index);
        const auto* name = std::get_if<std::string>(&wanted.Get());
        for (std::size_t column = 0; column < rows.ColumnCount(); ++column)
        {
            const bool found =
                name ? windows::EqualsIgnoringCase(windows::ToWide(rows.ColumnName(column)), windows::ToWide(*name))
                     : wanted.ToInteger() == static_cast<std::int32_t>(column);
            if (found)
            {
                return column;
            }
        }
        throw host::Fault("Impossibile trovare l'elemento corrispondente al nome o numero ordinale.", itemNotFound);
    }

    std::shared_ptr<Result> m_result;
};

class RecordsetFace final : public DispatchFace
{
public:
    explicit RecordsetFace(std::shared_ptr<Result> result)
        : DispatchFace(names::recordset::self)
        , m_result(std::move(result))
    {
        AddMember(names::recordset::state,
                  [this](const Arguments&) { return Variant(host::Value(m_result->rows ? 1 : 0)); });
        AddMember(names::recordset::eof,
                  [this](const Arguments&) { return Variant(host::Value(m_result->Open().IsAtEnd())); });
        AddMember(names::recordset::moveNext,
                  [this](const Arguments&)
                  {
                      m_result->OnARow().MoveNext();
                      return Variant();
                  });
        AddMember(names::recordset::fields,
                  [this](const Arguments&) { return Variant(MakeFace<FieldsFace>(m_result).Get()); });
        AddMember(names::recordset::close,
                  [this](const Arguments&)
                  {
                      static_cast<void>(m_result->Open());
                      m_result->rows.reset();
                      return Variant();
                  });
        SetDefault(names::recordset::fields);
    }

private:
    std::shared_ptr<Result> m_result;
};

} // namespace

ComPtr<IDispatch> MakeRecordsetFace(std::unique_ptr<host::Recordset> rows)
{
    auto result = std::make_shared<Result>();
    if (rows && rows->ColumnCount() != 0)
    {
        result->rows = std::move(rows);
    }
    return MakeFace<RecordsetFace>(std::move(result));
}

} // namespace vellumo::norda
