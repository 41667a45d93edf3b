-- The program's own: which registrations came with an import that has a name. A database may lack these tables; the
-- first such import makes them.

CREATE TABLE BK01_IMPORTI (
  BK01_ID          DECIMAL(10,0) IDENTITY(1,1) NOT NULL,
  BK01_DITTA_CG18  DECIMAL(5,0)  NOT NULL,
  BK01_NOME        NVARCHAR(40)  NOT NULL,
  BK01_TIPO        NVARCHAR(20)  NOT NULL,                -- kind of file
  BK01_RIGHE       INT           NOT NULL,                -- lines of the file
  BK01_DATA        DATETIME      NOT NULL,
  CONSTRAINT PK_BK01 PRIMARY KEY (BK01_ID)
)
GO
CREATE TABLE BK02_REGIMPORTI (
  BK02_DITTA_CG18   DECIMAL(5,0)   NOT NULL,
  BK02_NUMREG_CG41  DECIMAL(10,0)  NOT NULL,
  BK02_ID_BK01      DECIMAL(10,0)  NOT NULL,
  CONSTRAINT PK_BK02 PRIMARY KEY (BK02_DITTA_CG18, BK02_NUMREG_CG41)
)
GO
-- The registrations of one import.
CREATE INDEX IX_BK02_IMPORTO ON BK02_REGIMPORTI (BK02_ID_BK01)
GO
