-- The demo company, its accounting years, sites, customers and suppliers.

INSERT INTO CG18_ANADITTE (CG18_CODICE, CG18_RAGSOC, CG18_GRUPPO_CG10, CG18_STRUTTCONTI, CG18_MASTROCLI, CG18_MASTROFOR) VALUES
  (1, N'Meccanica Valdorra S.p.A.', 1, 4, N'14010000', N'24010000')
GO
-- The company closed its years in June until 2023; the second half of that year is a year of its own.
INSERT INTO CG19_ANADITTAESER (CG19_DITTA_CG18, CG19_ANNO, CG19_PROGESER, CG19_DATAINIZIO, CG19_DATAFINE, CG19_FLGCHIUSO) VALUES
  (1, 2022, 1, '20220701', '20230630', 1),
  (1, 2023, 1, '20230701', '20231231', 1),
  (1, 2024, 1, '20240101', '20241231', 1),
  (1, 2025, 1, '20250101', '20251231', 0),
  (1, 2026, 1, '20260101', '20261231', 0)
GO
INSERT INTO CG31_SEDI (CG31_DITTA_CG18, CG31_CODICE, CG31_DESCR) VALUES
  (1, 1, N'Stabilimento di Lecco'),
  (1, 2, N'Stabilimento di Modena'),
  (1, 3, N'Deposito di Bari')
GO
INSERT INTO CG44_CLIFOR (CG44_DITTA_CG18, CG44_TIPOCF, CG44_CLIFOR, CG44_RAGSOC) VALUES
  (1, 0, 101, N'Trattori Padani S.r.l.'),
  (1, 0, 102, N'Impianti Tirreno S.p.A.'),
  (1, 0, 103, N'Nordmaschinen GmbH'),
  (1, 0, 104, N'Ateliers du Rhône S.A.'),
  (1, 0, 105, N'Pompe dell''Adriatico S.r.l.'),
  (1, 1, 201, N'Energia Lariana S.p.A.'),
  (1, 1, 202, N'Manutenzioni Emiliane S.n.c.'),
  (1, 1, 203, N'Studio Ferri & Associati'),
  (1, 1, 204, N'Agenzia Pubblicitaria Ottobrera'),
  (1, 1, 205, N'Reti e Telefonia S.p.A.'),
  (1, 1, 206, N'Assicurazioni del Verbano'),
  (1, 1, 207, N'Splendor Servizi Soc. Coop.'),
  (1, 1, 208, N'Viaggi d''Affari S.r.l.'),
  (1, 1, 209, N'Immobiliare San Rocco'),
  (1, 1, 210, N'Autonoleggi Riuniti S.p.A.'),
  (1, 1, 211, N'Scuola Tecnica Formatori'),
  (1, 1, 212, N'Acciaierie della Brenta S.p.A.')
GO
