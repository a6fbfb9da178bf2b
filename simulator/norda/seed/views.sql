-- Views of the practice's database.

CREATE VIEW VwPartecipazioneSpesa AS
SELECT IDEsenzione, CodiceIdentificativo, Esenzione, IDTipoEsenzione, EsenzioneInvalidita
FROM Norda..Esenzione;

CREATE VIEW VwEsenzionePerPaziente AS
SELECT EsenzionePerPaziente.IDEsenzionePerPaziente, EsenzionePerPaziente.IDPaziente, EsenzionePerPaziente.IDEsenzione,
  E.CodiceIdentificativo AS CodiceIdentificativoEsenzione, EsenzionePerPaziente.Esenzione,
  EsenzionePerPaziente.DataEsenzione, EsenzionePerPaziente.Scadenza
FROM EsenzionePerPaziente LEFT JOIN Norda..Esenzione AS E ON E.IDEsenzione = EsenzionePerPaziente.IDEsenzione;

CREATE VIEW VwRicettaPaziente AS
SELECT R.IDRicetta, R.NumRicetta, R.IDPaziente, R.DataRicetta, R.TipoRicetta, R.IDFormatoRicetta, R.IDTipoRichiesta,
  R.IDPrioritaRicetta, R.TipoRaggruppamento AS TR_TipoRaggruppamento, R.Annotazioni, R.MotivoRicetta,
  R.IDPartecipazioneSpesa, R.GruppoEsenzione AS PS_GruppoEsenzione, R.NumeroEsenzione,
  ISNULL(R.CodiceEsenzione, E.CodiceIdentificativo) AS PS_CodiceIdentificativo, E.IDTipoEsenzione,
  P.CodiceFiscale AS PAZ_CodiceFiscale, P.Cognome AS PAZ_Cognome, P.Nome AS PAZ_Nome, P.Sesso AS PAZ_Sesso,
  P.DataNascita AS PAZ_DataNascita, R.EtaPaziente AS PAZ_Eta, D.Indirizzo AS PAZ_Indirizzo, C.Comune AS PAZ_Comune,
  G.CodiceRegione AS CodiceRegioneAsl, '030' AS CodiceRegioneTariffario, A.NumeroASL AS NumeroAsl,
  V.SiglaProvincia AS SiglaProvinciaAsl
FROM Ricetta AS R
  INNER JOIN Paziente AS P ON P.IDPaziente = R.IDPaziente
  LEFT JOIN Norda..Esenzione AS E ON E.IDEsenzione = R.IDPartecipazioneSpesa
  LEFT JOIN Residenza AS D ON D.IDPaziente = R.IDPaziente AND D.IDTipoResidenza = 1
  LEFT JOIN Norda..Comune AS C ON C.IDComune = D.IDComune
  LEFT JOIN Norda..Provincia AS V ON V.IDProvincia = C.IDProvincia
  LEFT JOIN Norda..Asl AS A ON A.IDAsl = P.IDASL
  LEFT JOIN Norda..Regione AS G ON G.IDRegione = A.IDRegione;

CREATE VIEW VwRicettaFarmaciSSN2009 AS
SELECT R.IDRicetta AS IDRicettaFarmaci, VwRicettaPaziente.*,
  R.CodiceAIC_1, R.Farmaco_1 AS FarmacoBreve_1, R.Quantita_1, R.Classe_1 AS ClasseFarmaco_1,
  R.Posologia_1 AS PosologiaBreve_1, R.NotaCuf_1 AS NotaCuf_1, R.NotaCuf_1 AS NotaCuf_1_Ori,
  R.CodiceAIC_2, R.Farmaco_2 AS FarmacoBreve_2, R.Quantita_2, R.Classe_2 AS ClasseFarmaco_2,
  R.Posologia_2 AS PosologiaBreve_2, R.NotaCuf_2 AS NotaCuf_2, R.NotaCuf_2 AS NotaCuf_2_Ori
FROM VwRicettaPaziente
  INNER JOIN Ricetta AS R ON R.IDRicetta = VwRicettaPaziente.IDRicetta AND R.NumRicetta = VwRicettaPaziente.NumRicetta;

CREATE VIEW VwRicettaAccertamentiSSN2009_Dettagli AS
SELECT D.IDRicetta AS IDRicettaAccertamenti, VwRicettaPaziente.*,
  D.Codice AS PT_CodicePrestazioneTariffario, D.Prestazione, D.Quantita
FROM VwRicettaPaziente
  INNER JOIN RicettaPrestazione AS D
    ON D.IDRicetta = VwRicettaPaziente.IDRicetta AND D.NumRicetta = VwRicettaPaziente.NumRicetta;
