' Shows the cards of a budget: cscript client.vbs FILE, where FILE was made by `bukorval create FILE --demo`.
Set connection = CreateObject("BUKORVAL.Connection")
connection.Open "Provider=SQLite;Data Source=" & WScript.Arguments(0)
Set session = CreateObject("BUKORVAL.Session")
session.Open connection

Set budget = CreateObject("BUKORVAL.CLSKORVAL")
budget.Connessione = connection
Set budget.ActiveInterface = session
budget.CodiceDitta = session.CodiceDitta
budget.TipoBudget = 4  ' general expenses, kept per site and card kind
budget.SottoTipoBudget = "01"
budget.AnnoEsercizio = 2025
budget.ProgressivoEsercizio = 1
budget.CodiceSede = 1
budget.BdgTipoScheda = 1  ' revenue

Set grid = budget.RecordSetBudget
If budget.Stato <> 0 Then WScript.Echo budget.errore
Do Until grid.EOF
  WScript.Echo budget.RTrimN(grid("BU65_SCHEDA_BU07")) & ": budget " & grid("IMP_BUDGET") & ", delta " & _
    budget.CalcolaDelta(grid("IMP_CONSUNTIVO"), grid("IMP_BUDGET"))
  grid.MoveNext
Loop
WScript.Echo "end"
