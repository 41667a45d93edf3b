' The grid and the periods of a card, field by field.
Option Explicit
Dim connection, session, budget, grid, field, names, rows, copy
Set connection = CreateObject("BUKORVAL.Connection")
connection.Open "Provider=SQLite;Data Source=" & WScript.Arguments(0)
Set session = CreateObject("BUKORVAL.Session")
session.Open connection
Set budget = CreateObject("BUKORVAL.CLSKORVAL")
budget.Connessione = connection
Set budget.ActiveInterface = session
budget.CodiceDitta = session.CodiceDitta
budget.TipoBudget = 4
budget.SottoTipoBudget = "01"
budget.AnnoEsercizio = 2025
budget.ProgressivoEsercizio = 1
budget.CodiceSede = 1
budget.BdgTipoScheda = 1

Set grid = budget.RecordSetBudget
WScript.Echo budget.Stato & " " & budget.errore & ", " & grid.RecordCount & " cards"
Do Until grid.EOF
  WScript.Echo budget.RTrimN(grid("BU65_SCHEDA_BU07")) & ": budget " & grid("IMP_BUDGET") & ", delta " & _
    budget.CalcolaDelta(grid("IMP_CONSUNTIVO"), grid("IMP_BUDGET"))
  grid.MoveNext
Loop
grid.Filter = "IMP_BUDGET > 50000"
WScript.Echo grid.Filter & ": " & grid.RecordCount
grid.Filter = 0
WScript.Echo "all: " & grid.RecordCount & ", filter " & grid.Filter

Set grid = budget.RecSetPeriodiBudget(59)
names = ""
For Each field In grid.Fields
  If Left(field.Name, 4) = "IMP_" Then names = names & field.Name & "(" & field.Precision & "," & field.NumericScale & ") "
Next
WScript.Echo names
rows = grid.GetRows(2, 1, Array("PERIODO", "IMP_BUDGET"))
WScript.Echo UBound(rows, 1) & " " & UBound(rows, 2) & ": " & rows(0, 1) & " " & rows(1, 1)
Set copy = grid.Clone
copy.MoveLast
WScript.Echo copy.Fields("PERIODO").Value & " of the clone, " & grid("PERIODO") & " of the set"
copy("IMP_BUDGET") = "1234,5"
copy.Update
grid.MoveLast
WScript.Echo TypeName(grid("IMP_BUDGET").Value) & " " & grid("IMP_BUDGET")
WScript.Echo "end"
