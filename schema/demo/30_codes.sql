-- What the sales budget is analysed by.

INSERT INTO MG08_AREE (MG08_CODICE, MG08_DESCR) VALUES
  (N'NOR', N'Nord Italia'),
  (N'CEN', N'Centro Italia'),
  (N'EST', N'Estero')
GO
INSERT INTO MG53_FAMIGLIE (MG53_CODICE, MG53_DESCR) VALUES
  (N'POM', N'Pompe oleodinamiche'),
  (N'VAL', N'Valvole')
GO
INSERT INTO MG66_ANAGART (MG66_DITTA_CG18, MG66_CODART, MG66_FAM_MG53) VALUES
  (1, N'PO-16', N'POM'),
  (1, N'PO-32', N'POM'),
  (1, N'VR-10', N'VAL')
GO
INSERT INTO MG87_DESCRARTICOLI (MG87_DITTA_CG18, MG87_CODART_MG66, MG87_DESCART) VALUES
  (1, N'PO-16', N'Pompa a ingranaggi 16 cc'),
  (1, N'PO-32', N'Pompa a ingranaggi 32 cc'),
  (1, N'VR-10', N'Valvola regolatrice pressione 10 l/min')
GO
INSERT INTO MG5E_OPZIONI (MG5E_DITTA_CG18, MG5E_CODART_MG66, MG5E_OPZIONE, MG5E_DESCR) VALUES
  (1, N'PO-16', N'STD', N'Esecuzione standard'),
  (1, N'PO-32', N'STD', N'Esecuzione standard'),
  (1, N'PO-32', N'INOX', N'Corpo in acciaio inossidabile'),
  (1, N'VR-10', N'STD', N'Esecuzione standard')
GO
