-- Indexes beside the primary keys, each for the statement named.

-- The lines of a card's account, exactly or by prefix, with all that the elaboration reads of them; the registration
-- is then found by its key.
CREATE INDEX IX_CG42_CONTO ON CG42_MOVCONT (CG42_CONTOPAR_CG24, CG42_DITTA_CG18, CG42_NUMREG_CG41, CG42_NUMRIGACONT)
  INCLUDE (CG42_GRUPPO_CG10, CG42_INDTIPOOPER, CG42_INDDAAV, CG42_IMPTOTALE, CG42_FLGCOMP, CG42_INDRATRIS,
           CG42_DATAINICOMP, CG42_DATAFINCOMP, CG42_CODICE_CG31, CG42_CODICE_CG33)
GO
-- The registrations of a month for the accounting situation. The date stands alone: behind company and year it would
-- look better than a card's account to a planner without statistics, and every card would read every registration.
CREATE INDEX IX_CG41_DATAREG ON CG41_PRIMANOTA (CG41_DATAREG)
GO
-- The cards of a budget, in the order the elaborations take them.
CREATE INDEX IX_BU65_SCHEDE ON BU65_TESBUDGET (BU65_DITTA_CG18, BU65_INDTIPO_BU01, BU65_SOTTOTIPO_BU01, BU65_ANNO, BU65_PROGESER, BU65_INDCOSRIC_BU07, BU65_SCHEDA_BU07, BU65_CODICE_CG31)
GO
-- The totals of the budget grid, read kind by kind without touching the table.
CREATE INDEX IX_BU66_TOTALI ON BU66_DETBUDGET (BU66_TIPO, BU66_ID_BU65, BU66_PERIODO, BU66_IMPORTO, BU66_QTA1, BU66_QTA2)
GO
-- One card's details.
CREATE INDEX IX_BU66_SCHEDA ON BU66_DETBUDGET (BU66_ID_BU65, BU66_TIPO, BU66_PERIODO)
GO
-- A card has one detail of a kind and period; of orders (2) it may have several.
CREATE UNIQUE INDEX UX_BU66_DETTAGLIO ON BU66_DETBUDGET (BU66_ID_BU65, BU66_TIPO, BU66_PERIODO) WHERE BU66_TIPO <> 2
GO
CREATE INDEX IX_BU14_SCHEDA ON BU14_SCADCFLOW (BU14_IDBUDGET, BU14_DATASCAD)
GO
CREATE INDEX IX_BU63_SCHEDA ON BU63_DETMASTRI (BU63_ID_BU65)
GO
CREATE INDEX IX_BU02_DESTINAZIONE ON BU02_TESTADEST (BU02_IDDESTINAZIONE)
GO
-- Whether a structure has an element with a value.
CREATE INDEX IX_BU61_VALORE ON BU61_STRUTTELEM (BU61_CODICE_BU60, BU61_CAMPO, BU61_VALORE)
GO
