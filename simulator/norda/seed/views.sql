-- Views of the practice's database.

CREATE VIEW VwPartecipazioneSpesa AS
SELECT IDEsenzione, CodiceIdentificativo, Esenzione, IDTipoEsenzione, EsenzioneInvalidita
FROM Norda..Esenzione;

CREATE VIEW VwEsenzionePerPaziente AS
SELECT EsenzionePerPaziente.IDEsenzionePerPaziente, EsenzionePerPaziente.IDPaziente, EsenzionePerPaziente.IDEsenzione,
  E.CodiceIdentificativo AS CodiceIdentificativoEsenzione, EsenzionePerPaziente.Esenzione,
  EsenzionePerPaziente.DataEsenzione, EsenzionePerPaziente.Scadenza
FROM EsenzionePerPaziente LEFT JOIN Norda..Esenzione AS E ON E.IDEsenzione = EsenzionePerPaziente.IDEsenzione;
