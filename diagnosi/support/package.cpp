#include "diagnosi/support/package.h"

#include "diagnosi/exchanges/exchange_page.h"
#include "diagnosi/exchanges/outcome_words.h"
#include "diagnosi/support/anonymiser.h"
#include "diagnosi/support/zip_archive.h"
#include "environment/ansi_text.h"
#include "environment/files.h"
#include "environment/siss_date_time.h"
#include "host/text.h"
#include "host/trace_files.h"
#include "host/version.h"
#include "service/trace_folder.h"

#include <algorithm>
#include <utility>

namespace vellumo::diagnosi
{
namespace
{

// Parts of a text between `separator`s, the last one too.
std::vector<std::string_view> Split(std::string_view text, char separator)
{
    std::vector<std::string_view> parts;
    for (auto end = text.find(separator); end != std::string_view::npos; end = text.find(separator))
    {
        parts.push_back(text.substr(0, end));
        text.remove_prefix(end + 1);
    }
    parts.push_back(text);
    return parts;
}

class Maker
{
public:
    Maker(const PackageSource& source, Random random)
        : m_source(source)
        , m_anonymiser(std::move(random))
    {
    }

    Package Run()
    {
        ExchangeRecord record = ReadExchanges(m_source.logFolder, m_source.period);
        for (const Operation& operation : record.operations)
        {
            for (const Call& call : operation.calls)
            {
                m_anonymiser.Learn(call.request.value_or(""));
                m_anonymiser.Learn(call.reply.value_or(""));
            }
        }
        Anonymise(record);
        AddTraces();
        for (const auto& name : m_source.names)
        {
            m_anonymiser.LearnName(name);
        }
        const std::string report = m_anonymiser.Report(m_source.report);
        Add("controlli.txt", "\xEF\xBB\xBF" + report, m_source.now);
        m_head.attachments.insert(m_head.attachments.begin(), {"Controlli dell'installazione", report});
        WritePage(record);
        return std::move(m_package);
    }

private:
    void Add(std::string name, std::string bytes, host::Date time)
    {
        m_package.files.push_back({std::move(name), std::move(bytes), time});
    }

    void Anonymise(ExchangeRecord& record)
    {
        for (Operation& operation : record.operations)
        {
            for (Call& call : operation.calls)
            {
                Anonymise(call);
            }
        }
        // Names of other files may say anything.
        if (const auto count = record.skipped.size(); count > 0)
        {
            record.skipped = {std::to_string(count) + " file o cartelle, che restano nello studio"};
        }
    }

    void Anonymise(Call& call)
    {
        if (KindOfService(call.service) == Operation::Kind::Other)
        {
            call.service = "Servizio sconosciuto";
        }
        for (auto* part : {&call.request, &call.reply})
        {
            if (*part)
            {
                *part = m_anonymiser.Message(**part);
                const bool isRequest = part == &call.request;
                Add("Log/" + call.folder + '/' + std::to_string(call.number) +
                        (isRequest ? " - Richiesta " : " - Risposta ") + call.service,
                    environment::ToAnsi(**part),
                    (isRequest ? call.requestTime : call.replyTime).value_or(m_source.now));
            }
        }
        call.outcome = OutcomeOf(call.service, call.reply);
    }

    void AddTraces()
    {
        auto names = host::NamesIn(m_source.traceFolder);
        std::ranges::sort(names);
        std::size_t others = 0;
        for (const auto& name : names)
        {
            const auto bytes = environment::ReadFile(environment::JoinPath(m_source.traceFolder, name));
            if (bytes && name.starts_with(service::lineFilePrefix) && IsTraceName(name))
            {
                AddTrace(name, TraceLines(environment::FromAnsi(*bytes)));
            }
            else if (bytes && name.starts_with(service::codeFilePrefix))
            {
                AddTrace(CodeFileName(name), CodeLines(environment::FromAnsi(*bytes)));
            }
            else
            {
                ++others;
            }
        }
        if (others > 0)
        {
            m_head.facts.push_back(std::to_string(others) + " altri file di SISS\\Tracce, che restano nello studio");
        }
    }

    // "tracce 2026-11 2.txt"
    static bool IsTraceName(const std::string& name)
    {
        return name.ends_with(".txt") &&
               name.substr(7, name.size() - 11).find_first_not_of("0123456789- ") == std::string::npos;
    }

    void AddTrace(const std::string& name, const std::string& text)
    {
        Add("Tracce/" + name, environment::ToAnsi(text), m_source.now);
        m_head.attachments.push_back({"SISS\\Tracce\\" + name, text});
    }

    std::string TraceLines(std::string_view text)
    {
        std::string lines;
        for (const auto line : Split(text, '\n'))
        {
            constexpr std::size_t stamp = 19;
            const auto time = environment::TimeOfStamp(line.substr(0, stamp));
            if (!host::Trimmed(line).empty() && (!time || m_source.period.Has(*time)))
            {
                lines += m_anonymiser.Line(host::Trimmed(line, "\r")) + "\r\n";
            }
        }
        return lines;
    }

    // "codici 2026-11-22 10.15.00 PC3-1.txt"
    std::string CodeFileName(const std::string& name)
    {
        constexpr std::string_view pattern = "codici 0000-00-00 00.00.00 ";
        const auto end = name.rfind('-');
        const bool isWhole = environment::TimeOfStamp(std::string_view(name).substr(7, 19)) && end > pattern.size() &&
                             end != std::string::npos && name.ends_with(".txt");
        const auto number = isWhole ? name.substr(end + 1, name.size() - end - 5) : std::string();
        return isWhole && number.find_first_not_of("0123456789") == std::string::npos
                   ? name.substr(0, pattern.size()) +
                         m_anonymiser.Machine(name.substr(pattern.size(), end - pattern.size())) + '-' + number + ".txt"
                   : "codici " + std::to_string(++m_oddNames) + ".txt";
    }

    // "*1\tPC3\t5\t2026-11-22 10.15.00\tRicetta farmaci 101, numero 1\tIUP 030…"; the first line is the library's own.
    std::string CodeLines(std::string_view text)
    {
        constexpr std::size_t fieldCount = 6;
        std::string lines;
        for (const auto line : Split(text, '\n'))
        {
            auto fields = Split(host::Trimmed(line, "\r"), '\t');
            if (fields.size() == fieldCount)
            {
                const std::string machine = m_anonymiser.Machine(std::string(fields[1]));
                std::string whole(fields[0]);
                for (std::size_t i = 1; i < fieldCount; ++i)
                {
                    whole.append("\t").append(i == 1 ? machine : m_anonymiser.WithoutKnown(fields[i]));
                }
                lines += whole + "\r\n";
            }
        }
        return lines;
    }

    void WritePage(const ExchangeRecord& record)
    {
        const MaskTally& tally = m_anonymiser.Tally();
        m_package.masked.push_back("persone con uno pseudonimo: " + std::to_string(m_anonymiser.PersonCount()));
        for (std::size_t i = 0; i < maskCount; ++i)
        {
            const auto mask = static_cast<Mask>(i);
            if (tally.Count(mask) > 0)
            {
                m_package.masked.push_back(std::string(NameOf(mask)) + ": " + std::to_string(tally.Count(mask)));
            }
        }
        m_head.title = "Pacchetto per l'assistenza";
        m_head.facts.insert(m_head.facts.begin(),
                            "Vellumo " + std::string(host::fullVersion) + ", pagina del " + TimeText(m_source.now));
        m_head.banner = {
            "Questa pagina mostra tutto ciò che esce dallo studio: controlli, registro degli scambi e tracce. "
            "I dati delle persone e i dati sanitari sono mascherati; la stessa persona ha lo stesso "
            "pseudonimo in tutto il pacchetto, e un altro nel prossimo.",
            "Restano fra l'altro IUP e protocolli, numeri interni di ricette e pazienti, codici del SISS, date degli "
            "invii e dei certificati: servono per ritrovare il caso. Il pacchetto va solo a chi assiste.",
            "Che cosa è stato mascherato: "};
        for (std::size_t i = 0; i < m_package.masked.size(); ++i)
        {
            m_head.banner.back() += (i == 0 ? "" : "; ") + m_package.masked[i];
        }
        m_head.banner.back() += '.';
        m_package.page = WriteExchangePage(record, m_head);
        Add("registro.html", m_package.page, m_source.now);
    }

    const PackageSource& m_source;
    Anonymiser m_anonymiser;
    PageHead m_head;
    Package m_package;
    std::size_t m_oddNames = 0;
};

} // namespace

Package MakePackage(const PackageSource& source, Random random)
{
    return Maker(source, std::move(random)).Run();
}

std::string ZipOf(const Package& package)
{
    ZipArchive archive;
    for (const PackageFile& file : package.files)
    {
        archive.Add(file.name, file.bytes, file.time);
    }
    return archive.Finish();
}

} // namespace vellumo::diagnosi
