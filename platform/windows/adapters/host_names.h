// Every name by which the library reaches an object of the host or of the SISS client: ProgIDs and members. They are
// the host's to choose, so they stand here and nowhere else; where a host spells one differently, a file beside the
// library says so (host_name_map.h). What each takes and answers is the table of host_contract.cpp.
#pragma once

namespace vellumo::windows::names
{

// As compiled in; what a host calls it is asked of `HostNames`.
struct Name
{
    const wchar_t* object; // whose member it is; "" for a ProgID
    const wchar_t* text;

    constexpr operator const wchar_t*() const noexcept { return text; }
};

// --- The SISS client's bridge -------------------------------------------------------------------------------------

inline constexpr Name bridgeProgId{L"", L"Winbridge4seb.Bean.1"};
inline constexpr Name callSebMethod{bridgeProgId.text, L"callSebMethod"};

// --- The database connection: the object model of ADO -------------------------------------------------------------

namespace connection
{
inline constexpr const wchar_t* self = L"Connection";
inline constexpr Name execute{self, L"Execute"};
inline constexpr Name beginTrans{self, L"BeginTrans"};
inline constexpr Name commitTrans{self, L"CommitTrans"};
inline constexpr Name rollbackTrans{self, L"RollbackTrans"};
} // namespace connection

namespace recordset
{
inline constexpr const wchar_t* self = L"Recordset";
inline constexpr Name state{self, L"State"};
inline constexpr Name eof{self, L"EOF"};
inline constexpr Name moveNext{self, L"MoveNext"};
inline constexpr Name close{self, L"Close"};
inline constexpr Name fields{self, L"Fields"};
} // namespace recordset

namespace fields
{
inline constexpr const wchar_t* self = L"Fields";
inline constexpr Name count{self, L"Count"};
inline constexpr Name item{self, L"Item"};
} // namespace fields

namespace field
{
inline constexpr const wchar_t* self = L"Field";
inline constexpr Name name{self, L"Name"};
inline constexpr Name value{self, L"Value"};
} // namespace field

// --- The lock service ---------------------------------------------------------------------------------------------

namespace lockSrv
{
inline constexpr const wchar_t* self = L"LockSrv";
inline constexpr Name userId{self, L"IDUtente"};
} // namespace lockSrv

// --- The query helpers --------------------------------------------------------------------------------------------

namespace utils
{
inline constexpr const wchar_t* self = L"Utils";
inline constexpr Name executeScalar{self, L"ExecuteScalar"};
inline constexpr Name openRecordset{self, L"OpenRecordset"};
inline constexpr Name findKey{self, L"FindKey"};
inline constexpr Name execute{self, L"Execute"};
inline constexpr Name writeRow{self, L"WriteRow"};
inline constexpr Name tableDate{self, L"TableDate"};
inline constexpr Name storeTableDate{self, L"StoreTableDate"};
inline constexpr Name serviceLog{self, L"ServiceLog"};
inline constexpr Name toBoolean{self, L"ToBoolean"};
} // namespace utils

namespace serviceLog
{
inline constexpr const wchar_t* self = L"ServiceLog";
inline constexpr Name write{self, L"Write"};
} // namespace serviceLog

// --- Record objects, created by the library -----------------------------------------------------------------------

inline constexpr Name patientProgId{L"", L"Norda.Paziente"};
inline constexpr Name aslProgId{L"", L"Norda.Asl"};
inline constexpr Name specialistProgId{L"", L"Norda.Specialista"};
inline constexpr Name settingsProgId{L"", L"Norda.Impostazioni"};

namespace record
{
inline constexpr const wchar_t* self = L"Record";
inline constexpr Name connection{self, L"Connection"};
inline constexpr Name lockSrv{self, L"LockSrv"};
inline constexpr Name studio{self, L"Studio"};
inline constexpr Name load{self, L"Load"};
inline constexpr Name startNew{self, L"NewRecord"};
inline constexpr Name field{self, L"Field"};
inline constexpr Name save{self, L"Save"};
inline constexpr Name id{self, L"ID"};
} // namespace record

inline constexpr Name prescriptionDataProgId{L"", L"Norda.DatiRicetta"};

namespace prescriptionData
{
inline constexpr const wchar_t* self = L"DatiRicetta";
inline constexpr Name connection{self, L"Connection"};
inline constexpr Name utils{self, L"Utils"};
inline constexpr Name kind{self, L"Tipo"};
inline constexpr Name list{self, L"List"};
inline constexpr Name find{self, L"Find"};
} // namespace prescriptionData

inline constexpr Name sessionProgId{L"", L"Norda.SessionePrescrizione"};

namespace session
{
inline constexpr const wchar_t* self = L"SessionePrescrizione";
inline constexpr Name withoutSiss{self, L"SenzaSISS"};
inline constexpr Name toValidate{self, L"DaValidare"};
inline constexpr Name options{self, L"OpzioniRicetta"};
inline constexpr Name addResponse{self, L"AddResponse"};
inline constexpr Name responseCount{self, L"ResponseCount"};
inline constexpr Name response{self, L"Response"};
} // namespace session

namespace settings
{
inline constexpr const wchar_t* self = L"Impostazioni";
inline constexpr Name utils{self, L"Utils"};
inline constexpr Name load{self, L"Load"};
inline constexpr Name field{self, L"Field"};
} // namespace settings

} // namespace vellumo::windows::names
