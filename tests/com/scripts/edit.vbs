' Values, cards, errors: what is refused, and what a script sees of it.
Option Explicit
Dim connection, session, budget, id, card, missing, first, last, set1, words
Set connection = CreateObject("BUKORVAL.Connection")
connection.Open "Provider=SQLite;Data Source=" & WScript.Arguments(0)
Set session = CreateObject("BUKORVAL.Session")
session.Open connection, 1
Set budget = CreateObject("BUKORVAL.CLSKORVAL")
Set budget.Connessione = connection
Set budget.ActiveInterface = session
budget.TipoBudget = 4 : budget.SottoTipoBudget = "01"
budget.AnnoEsercizio = 2025 : budget.ProgressivoEsercizio = 1

Sub Tell(what)
  WScript.Echo what & ": " & budget.Stato & " " & budget.errore
End Sub

' In/out arguments reach the variables.
budget.DeterminaDateInizioFineEsercizio 1, 2025, 1, first, last
WScript.Echo TypeName(first) & " " & Year(first) & "-" & Month(first) & "-" & Day(first) & " to " & Month(last) & "-" & Day(last)
WScript.Echo budget.GetBdgDettaglioEsiste(59, 0, 3, id, missing) & " " & TypeName(id) & " " & missing
budget.AggiornaSingoloValoreBU66 id, 59, 0, 0, 3, 7250.5, card
Tell "set"
WScript.Echo connection.Execute("SELECT BU66_IMPORTO FROM BU66_DETBUDGET WHERE BU66_ID = " & id)("BU66_IMPORTO")
budget.AggiornaSingoloValoreBU66 id, 59, 0, 0, 3, "many", card
Tell "no number"
budget.BdgElaSchede_Elaborazione
Tell "missing input"

' What the call itself got wrong is an error of the script's language.
Sub Failing(what)
  WScript.Echo what & ": " & Hex(Err.Number) & " " & Err.Description
  Err.Clear
End Sub
On Error Resume Next
budget.TipoBudget = "quattro"
Failing "type"
budget.GetBdgNrPeriodi 1, 2
Failing "count"
budget.NoSuchMember
Failing "name"
Set set1 = CreateObject("BUKORVAL.Recordset")
set1.MoveNext
Failing "closed"
set1.Fields.Append "CODE", 200, 4
set1.Fields.Append "code", 200, 4
Failing "twice"
set1.Open
words = set1("CODE")
Failing "no row"
words = set1.Fields("NONE").Value
Failing "no field"
set1.AddNew
set1("CODE") = "too long"
Failing "too long"
set1("CODE") = "AB"
set1.Update
set1.Filter = "CODE ="
Failing "filter"
set1.Filter = 2
Failing "filter by number"
words = set1.GetRows(0)
Failing "no rows"
connection.Execute "SELECT 1 FROM NO_TABLE"
Failing "database"
On Error Goto 0
WScript.Echo set1.RecordCount & " " & set1("CODE") & " " & budget.TipoBudget
WScript.Echo "end"
