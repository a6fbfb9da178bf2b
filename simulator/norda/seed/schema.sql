-- Tables of the shared database and of the practice, in the SQL of SQL Server.

CREATE TABLE Norda..Regione (
  IDRegione INT IDENTITY(1,1) PRIMARY KEY,
  CodiceRegione NVARCHAR(3) NOT NULL,
  Regione NVARCHAR(60) NOT NULL
);
CREATE TABLE Norda..Provincia (
  IDProvincia INT IDENTITY(1,1) PRIMARY KEY,
  SiglaProvincia NVARCHAR(2) NOT NULL,
  Provincia NVARCHAR(60) NOT NULL,
  IDRegione INT NOT NULL
);
CREATE TABLE Norda..Comune (
  IDComune INT IDENTITY(1,1) PRIMARY KEY,
  Comune NVARCHAR(60) NOT NULL,
  CodiceISTAT NVARCHAR(6) NOT NULL,
  CodiceCatastale NVARCHAR(4) NOT NULL,
  Cap NVARCHAR(5) NOT NULL,
  IDProvincia INT NOT NULL
);
CREATE TABLE Norda..Asl (
  IDAsl INT IDENTITY(1,1) PRIMARY KEY,
  ASL NVARCHAR(100) NOT NULL,
  NumeroASL NVARCHAR(3) NOT NULL,
  IDRegione INT NOT NULL
);
CREATE TABLE Norda..Esenzione (
  IDEsenzione INT IDENTITY(1,1) PRIMARY KEY,
  CodiceIdentificativo NVARCHAR(20) NOT NULL,
  Esenzione NVARCHAR(255) NOT NULL,
  IDTipoEsenzione INT NOT NULL,
  EsenzioneInvalidita BIT NOT NULL,
  DataInizioValidita DATETIME NULL,
  DataFineValidita DATETIME NULL
);
CREATE TABLE Norda..SISS_Esenzione (
  IDSISSEsenzione INT IDENTITY(1,1) PRIMARY KEY,
  Codice NVARCHAR(20) NOT NULL,
  IDEsenzione INT NULL
);

CREATE TABLE Studio (
  IDStudio INT IDENTITY(1,1) PRIMARY KEY,
  Studio NVARCHAR(100) NOT NULL,
  Indirizzo NVARCHAR(100) NULL
);
CREATE TABLE ImpostazioneStudio (
  IDImpostazioneStudio INT IDENTITY(1,1) PRIMARY KEY,
  IDStudio INT NOT NULL,
  Nome NVARCHAR(60) NOT NULL,
  Valore NVARCHAR(255) NULL
);
CREATE TABLE Utente (
  IDUtente INT IDENTITY(1,1) PRIMARY KEY,
  Utente NVARCHAR(30) NOT NULL,
  Nome NVARCHAR(60) NOT NULL,
  Cognome NVARCHAR(60) NOT NULL
);
CREATE TABLE Specialista (
  IDSpecialista INT IDENTITY(1,1) PRIMARY KEY,
  IDUtente INT NOT NULL,
  Nome NVARCHAR(60) NOT NULL,
  Cognome NVARCHAR(60) NOT NULL,
  CodiceFiscale NVARCHAR(16) NOT NULL,
  CodiceRegionale NVARCHAR(20) NULL
);
CREATE TABLE Paziente (
  IDPaziente INT IDENTITY(1,1) PRIMARY KEY,
  IDStudio INT NULL,
  CodiceFiscale NVARCHAR(16) NULL,
  Cognome NVARCHAR(60) NULL,
  Nome NVARCHAR(60) NULL,
  Sesso NVARCHAR(1) NULL,
  DataNascita DATETIME NULL,
  IDComuneNascita INT NULL,
  NumTesseraSanitaria NVARCHAR(20) NULL,
  NumAssistito NVARCHAR(20) NULL,
  DataSceltaASL DATETIME NULL,
  DataScadenza DATETIME NULL,
  DataScelta DATETIME NULL,
  DataSospensione DATETIME NULL,
  Revocato BIT NULL,
  DataRevoca DATETIME NULL,
  Deceduto BIT NULL,
  IDASL INT NULL,
  CCELastUpdated DATETIME NULL,
  Note NVARCHAR(255) NULL
);
CREATE INDEX IX_Paziente_CodiceFiscale ON Paziente (CodiceFiscale);
CREATE INDEX IX_Paziente_NumTesseraSanitaria ON Paziente (NumTesseraSanitaria);
CREATE TABLE Residenza (
  IDResidenza INT IDENTITY(1,1) PRIMARY KEY,
  IDPaziente INT NOT NULL,
  IDTipoResidenza INT NOT NULL,
  Indirizzo NVARCHAR(120) NULL,
  Cap NVARCHAR(10) NULL,
  IDComune INT NULL
);
CREATE INDEX IX_Residenza ON Residenza (IDPaziente, IDTipoResidenza);
CREATE TABLE EsenzionePerPaziente (
  IDEsenzionePerPaziente INT IDENTITY(1,1) PRIMARY KEY,
  IDPaziente INT NOT NULL,
  IDEsenzione INT NOT NULL,
  Esenzione NVARCHAR(255) NULL,
  DataEsenzione DATETIME NULL,
  Scadenza DATETIME NULL
);
CREATE INDEX IX_EsenzionePerPaziente ON EsenzionePerPaziente (IDPaziente, IDEsenzione);
CREATE TABLE Ricetta (
  IDRigaRicetta INT IDENTITY(1,1) PRIMARY KEY,
  IDRicetta INT NOT NULL,
  NumRicetta INT NOT NULL,
  IDPaziente INT NOT NULL,
  DataRicetta DATETIME NOT NULL,
  EtaPaziente INT NOT NULL,
  TipoRicetta NVARCHAR(2) NOT NULL,
  IDFormatoRicetta INT NOT NULL,
  IDTipoRichiesta INT NOT NULL,
  IDPrioritaRicetta INT NULL,
  TipoRaggruppamento INT NOT NULL,
  IDPartecipazioneSpesa INT NULL,
  GruppoEsenzione NVARCHAR(2) NULL,
  CodiceEsenzione NVARCHAR(20) NULL,
  NumeroEsenzione NVARCHAR(20) NULL,
  Annotazioni NVARCHAR(255) NULL,
  MotivoRicetta NVARCHAR(1000) NULL,
  CodiceAIC_1 NVARCHAR(9) NULL,
  Farmaco_1 NVARCHAR(100) NULL,
  Quantita_1 FLOAT NULL,
  Classe_1 NVARCHAR(2) NULL,
  Posologia_1 NVARCHAR(100) NULL,
  NotaCuf_1 NVARCHAR(10) NULL,
  CodiceAIC_2 NVARCHAR(9) NULL,
  Farmaco_2 NVARCHAR(100) NULL,
  Quantita_2 FLOAT NULL,
  Classe_2 NVARCHAR(2) NULL,
  Posologia_2 NVARCHAR(100) NULL,
  NotaCuf_2 NVARCHAR(10) NULL
);
CREATE INDEX IX_Ricetta ON Ricetta (IDRicetta, NumRicetta);
CREATE TABLE RicettaPrestazione (
  IDRicettaPrestazione INT IDENTITY(1,1) PRIMARY KEY,
  IDRicetta INT NOT NULL,
  NumRicetta INT NOT NULL,
  Codice NVARCHAR(12) NULL,
  Prestazione NVARCHAR(100) NULL,
  Quantita INT NULL
);
CREATE TABLE RicettaSSN (
  IDRicettaSSN INT IDENTITY(1,1) PRIMARY KEY,
  IDRicetta INT NOT NULL,
  NumRicetta INT NOT NULL,
  IDMenuItem INT NOT NULL,
  CodiceIUP NVARCHAR(20) NULL,
  NumeroProtocollo NVARCHAR(20) NULL,
  Annullata BIT NOT NULL
);
CREATE TABLE SincronizzazioneTabella (
  IDSincronizzazioneTabella INT IDENTITY(1,1) PRIMARY KEY,
  Tabella NVARCHAR(60) NOT NULL,
  Data DATETIME NULL,
  IDUtente INT NULL
);
CREATE TABLE GiornaleServizi (
  IDGiornaleServizi INT IDENTITY(1,1) PRIMARY KEY,
  Data DATETIME NOT NULL,
  Riga NVARCHAR(1000) NOT NULL
);
CREATE TABLE CertificatoMalattia (
  IDCertificatoMalattia INT IDENTITY(1,1) PRIMARY KEY,
  IDSpecialista INT NULL,
  IDPaziente INT NULL,
  NumeroASL NVARCHAR(3) NULL,
  CodiceRegione NVARCHAR(3) NULL,
  IndirizzoDomicilio NVARCHAR(120) NULL,
  CapDomicilio NVARCHAR(10) NULL,
  IDComuneDomicilio INT NULL,
  ComuneDomicilio NVARCHAR(60) NULL,
  ProvinciaDomicilio NVARCHAR(2) NULL,
  IndirizzoResidenza NVARCHAR(120) NULL,
  CapResidenza NVARCHAR(10) NULL,
  IDComuneResidenza INT NULL,
  ComuneResidenza NVARCHAR(60) NULL,
  ProvinciaResidenza NVARCHAR(2) NULL,
  DataCertificato DATETIME NULL,
  DataInizio DATETIME NULL,
  DataScadenza DATETIME NULL,
  CodicePatologia NVARCHAR(10) NULL,
  Annotazioni NVARCHAR(255) NULL,
  IDTipoCertificato INT NULL,
  IDCategoriaVisita INT NULL,
  NumeroProtocollo NVARCHAR(30) NULL,
  NumeroProtocolloOrigine NVARCHAR(30) NULL,
  NumeroProtocolloAnnullamento NVARCHAR(30) NULL,
  DataRicezione DATETIME NULL
);
