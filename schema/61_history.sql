-- What the program wrote into cards, command by command. Databases made before it was kept lack these tables; the first
-- command that writes makes them.

CREATE TABLE BK03_STORICO (
  BK03_ID          DECIMAL(10,0) IDENTITY(1,1) NOT NULL,
  BK03_DITTA_CG18  DECIMAL(5,0)    NOT NULL,
  BK03_DATA        DATETIME        NOT NULL,
  BK03_UTENTE      NVARCHAR(60)    NULL,
  BK03_COMANDO     NVARCHAR(1000)  NULL,
  BK03_RIGHE       DECIMAL(10,0)   NOT NULL,              -- rows that the command changed
  BK03_ID_ANNULLO  DECIMAL(10,0)   NULL,                  -- the entry that took it back
  CONSTRAINT PK_BK03 PRIMARY KEY (BK03_ID)
)
GO
-- The change set of an entry, cut into lines.
CREATE TABLE BK04_MODIFICHE (
  BK04_ID_BK03  DECIMAL(10,0)  NOT NULL,
  BK04_NUMRIGA  DECIMAL(10,0)  NOT NULL,
  BK04_TESTO    NVARCHAR(MAX)  NOT NULL,
  CONSTRAINT PK_BK04 PRIMARY KEY (BK04_ID_BK03, BK04_NUMRIGA)
)
GO
