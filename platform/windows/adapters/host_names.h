// Every name by which the library reaches an object of the host or of the SISS client: ProgIDs and members. They are
// the host's to choose, so they stand here and nowhere else; a host that spells one differently needs a change in
// this file only. Arguments are given in their order; VARIANT types in brackets.
//
// docs/host-contract.md explains the same members to the people who build a host.
#pragma once

namespace vellumo::windows::names
{

// --- The SISS client's bridge -------------------------------------------------------------------------------------

inline constexpr const wchar_t* bridgeProgId = L"Winbridge4seb.Bean.1";
// (request envelope [BSTR]) -> reply envelope [BSTR]. Blocks until the reply is there.
inline constexpr const wchar_t* callSebMethod = L"callSebMethod";

// --- The database connection: the object model of ADO -------------------------------------------------------------

namespace connection
{
inline constexpr const wchar_t* self = L"Connection";
// (SQL text [BSTR]) -> Recordset, forward-only and read-only, on its first row.
inline constexpr const wchar_t* execute = L"Execute";
// () Transactions. The first one faults where the host has one open already.
inline constexpr const wchar_t* beginTrans = L"BeginTrans";
inline constexpr const wchar_t* commitTrans = L"CommitTrans";
inline constexpr const wchar_t* rollbackTrans = L"RollbackTrans";
} // namespace connection

namespace recordset
{
inline constexpr const wchar_t* self = L"Recordset";
// Property -> 0 when closed: the statement returned no rows and no columns [I4].
inline constexpr const wchar_t* state = L"State";
// Property -> True behind the last row [BOOL].
inline constexpr const wchar_t* eof = L"EOF";
inline constexpr const wchar_t* moveNext = L"MoveNext";
inline constexpr const wchar_t* close = L"Close";
// Property -> Fields, the columns in the order of the statement.
inline constexpr const wchar_t* fields = L"Fields";
} // namespace recordset

namespace fields
{
inline constexpr const wchar_t* self = L"Fields";
// Property -> number of columns [I4].
inline constexpr const wchar_t* count = L"Count";
// Property (index from 0 [I4]) -> Field. The object stays valid while the recordset moves.
inline constexpr const wchar_t* item = L"Item";
} // namespace fields

namespace field
{
inline constexpr const wchar_t* self = L"Field";
// Property -> name of the column [BSTR].
inline constexpr const wchar_t* name = L"Name";
// Property -> value in the current row; NULL is VT_NULL.
inline constexpr const wchar_t* value = L"Value";
} // namespace field

// --- The lock service ---------------------------------------------------------------------------------------------

namespace lockSrv
{
inline constexpr const wchar_t* self = L"LockSrv";
// Property -> identifier of the user logged on to the host [I4].
inline constexpr const wchar_t* userId = L"IDUtente";
} // namespace lockSrv

// --- The query helpers --------------------------------------------------------------------------------------------
// `provider` is the library's object by its interface ICCEDatabaseProvider [DISPATCH]; the host takes its connection
// from it. `parameters` is an array of VARIANT, first index 0, one for each placeholder "{0}", "{1}" of the text; the
// host puts them in, quoted for its database.

namespace utils
{
inline constexpr const wchar_t* self = L"Utils";
// (provider, SQL text, parameters) -> first column of the first row; Null or 0 without a row.
inline constexpr const wchar_t* executeScalar = L"ExecuteScalar";
// (provider, SQL text, parameters) -> Recordset.
inline constexpr const wchar_t* openRecordset = L"OpenRecordset";
// (provider, table, key column, condition, parameters) -> value of the key column; Null or 0 without a row.
inline constexpr const wchar_t* findKey = L"FindKey";
// (provider, SQL text, parameters)
inline constexpr const wchar_t* execute = L"Execute";
// (provider, table, key column, key or Null for a new row, array of column names, array of values) -> key of the row.
inline constexpr const wchar_t* writeRow = L"WriteRow";
// (provider, regional table) -> date that the host keeps for it [DATE]; Null when it keeps none.
inline constexpr const wchar_t* tableDate = L"TableDate";
// (provider, regional table, date [DATE], user [I4])
inline constexpr const wchar_t* storeTableDate = L"StoreTableDate";
// Property -> the host's journal of service errors.
inline constexpr const wchar_t* serviceLog = L"ServiceLog";
// (value) -> the host's reading of a settings value as a Boolean [BOOL].
inline constexpr const wchar_t* toBoolean = L"ToBoolean";
} // namespace utils

namespace serviceLog
{
inline constexpr const wchar_t* self = L"ServiceLog";
// (line [BSTR]) Records one line about a failed SISS service.
inline constexpr const wchar_t* write = L"Write";
} // namespace serviceLog

// --- Record objects, created by the library -----------------------------------------------------------------------
// A sickness certificate, which the host hands over, has `field` and `save` of a record; by these it is known.

inline constexpr const wchar_t* patientProgId = L"Norda.Paziente";
inline constexpr const wchar_t* aslProgId = L"Norda.Asl";
inline constexpr const wchar_t* specialistProgId = L"Norda.Specialista";
inline constexpr const wchar_t* settingsProgId = L"Norda.Impostazioni";

namespace record
{
inline constexpr const wchar_t* self = L"Record";
// Properties set before anything else; `studio` on the patient only.
inline constexpr const wchar_t* connection = L"Connection";
inline constexpr const wchar_t* lockSrv = L"LockSrv";
inline constexpr const wchar_t* studio = L"Studio";
// (identifier [I4]) -> False when there is no such row [BOOL].
inline constexpr const wchar_t* load = L"Load";
// () Starts a row that `Save` inserts.
inline constexpr const wchar_t* startNew = L"NewRecord";
// Property (column [BSTR]) -> value, readable and writable; NULL is VT_NULL.
inline constexpr const wchar_t* field = L"Field";
// () -> False when the host refused [BOOL].
inline constexpr const wchar_t* save = L"Save";
// Property -> identifier of the row [I4]; of a new one, after `Save`.
inline constexpr const wchar_t* id = L"ID";
} // namespace record

// One row of a prescription: an object as above, already loaded; of its members only `Field`, `Save` and `ID` are used.

inline constexpr const wchar_t* prescriptionDataProgId = L"Norda.DatiRicetta";

// The rows of RicettaSSN of one kind. `Connection` as above, then:
namespace prescriptionData
{
inline constexpr const wchar_t* self = L"DatiRicetta";
inline constexpr const wchar_t* connection = L"Connection";
// Property -> the query helpers that the host handed over.
inline constexpr const wchar_t* utils = L"Utils";
// Property -> 1 drugs, 2 tests; for a cancellation the number that the host passed [I4].
inline constexpr const wchar_t* kind = L"Tipo";
// (form [I4], number or 0 for all [I4]) -> Recordset with the columns IDRicetta and NumRicetta, in the host's order.
inline constexpr const wchar_t* list = L"List";
// (form [I4], number [I4]) -> the row as a record object; Nothing when there is none.
inline constexpr const wchar_t* find = L"Find";
} // namespace prescriptionData

inline constexpr const wchar_t* sessionProgId = L"Norda.SessionePrescrizione";

// The prescribing session that the library creates, the host keeps and passes back.
namespace session
{
inline constexpr const wchar_t* self = L"SessionePrescrizione";
// Properties, readable and writable [BOOL]; False in a fresh object.
inline constexpr const wchar_t* withoutSiss = L"SenzaSISS";
inline constexpr const wchar_t* toValidate = L"DaValidare";
// Property -> Vellumo.OpzioniRicetta; set as an object.
inline constexpr const wchar_t* options = L"OpzioniRicetta";
// (kind [I4], response [DISPATCH]) Appends to the list of that kind. The host only keeps the object.
inline constexpr const wchar_t* addResponse = L"AddResponse";
// Property (kind [I4]) -> how many there are [I4].
inline constexpr const wchar_t* responseCount = L"ResponseCount";
// Property (kind [I4], position from 0 [I4]) -> the very object that was appended.
inline constexpr const wchar_t* response = L"Response";
} // namespace session

// The practice's settings: `Connection` and `LockSrv` as above, `Utils` if the class has it, then:
namespace settings
{
inline constexpr const wchar_t* self = L"Impostazioni";
// Property, the host's query helpers.
inline constexpr const wchar_t* utils = L"Utils";
// (practice [I4]) -> False when it has no settings [BOOL].
inline constexpr const wchar_t* load = L"Load";
// Property (name [BSTR]) -> value.
inline constexpr const wchar_t* field = L"Field";
} // namespace settings

} // namespace vellumo::windows::names
