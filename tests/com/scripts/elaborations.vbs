' The three elaborations with their events; dictionaries, sessions and connections of somebody else's.
Option Explicit
Dim connection, session, budget, listener, strange, sites, key, proposals, changes
Set strange = CreateObject("BUKORVALTest.Stranger")
Set connection = CreateObject("BUKORVAL.Connection")
connection.Open "Provider=SQLite;Data Source=" & WScript.Arguments(0)
Set session = CreateObject("BUKORVAL.Session")
session.Open connection
Set budget = CreateObject("BUKORVAL.CLSKORVAL")
budget.Connessione = strange.Of(connection)
Set budget.ActiveInterface = strange.Of(session)
Set listener = CreateObject("BUKORVALTest.Listener")
listener.Listen budget

Sub Tell(what)
  WScript.Echo what & ": " & budget.Stato & " " & budget.errore
End Sub

budget.TipoBudget = 4 : budget.SottoTipoBudget = "01"
budget.AnnoEsercizio = 2025 : budget.ProgressivoEsercizio = 1
budget.AnnoEsercizioMovimenti = 2025 : budget.ProgressivoEsercizioMovimenti = 1
budget.DaData = DateSerial(2025, 1, 1) : budget.AData = DateSerial(2025, 3, 31)
budget.TipoMovimenti = "1 = 1"
budget.TipoScostamento = 99
budget.CodicePdcCoGeDitta = session.CodicePdcCoGe
budget.CodiceDitta = session.CodiceDitta
budget.BdgTipoScheda = 0
budget.TipoDettaglioDestinazione = 1
budget.DaScheda = "FIERE" : budget.AScheda = "FIERE"

' A dictionary that changes after it was given.
Set sites = CreateObject("Scripting.Dictionary")
sites.Add 1, 1
Set budget.ElencoSedi = sites
sites.Add 2, 2
budget.BdgElaSchede_Elaborazione
Tell "cards"
WScript.Echo "last site " & budget.CodiceSede & ", " & budget.RstBdgSchedeDaElaborare.RecordCount & " card"
For Each key In budget.ElencoSedi
  WScript.Echo "site " & key & ": " & budget.ElencoSedi(key)
Next

Set sites = CreateObject("BUKORVAL.Dictionary")
sites("a") = 1
sites("b") = 2.5
sites.Remove "a"
WScript.Echo sites.Count & " " & sites("b") & " " & sites.Exists("a") & " " & UBound(sites.Keys)

budget.CodiceSede = 1
budget.TipoElaborazioneBO = Empty
budget.BdgDestinazioneSottoTipo = "02"
budget.BdgDestinazioneAnnoEsercizio = 2025
budget.BdgDestinazioneProgressivoEsercizio = 1
budget.BdgDestinazioneCodiceSede = 1
budget.TipoDettaglioOrigine = 0
budget.TipoDettaglioDestinazione = 0
budget.BdgDupSchede_Duplicazione
Tell "duplication"

budget.TipoBudget = 5
budget.TipoElaborazioneBO = Empty
budget.CodiceSede = Empty
budget.DaConto = "62050001" : budget.AConto = "62050002"
budget.TipoScostamento = 2
Set changes = CreateObject("BUKORVAL.Recordset")
changes.Fields.Append "CONTO", 200, 10
changes.Fields.Append "PERCSCOST", 5
changes.Fields.Append "FLGPERIODI", 2
changes.Open
changes.AddNew Array("CONTO", "PERCSCOST", "FLGPERIODI"), Array("62050001", 10, 0)
Set budget.RstScostPerConto = strange.Of(changes)
budget.BdgElaEco_PopolaRstSaldiElaEco
Tell "balances"
WScript.Echo "first proposal " & budget.RstSaldiElaEco("CONTO")
Set proposals = budget.RstSaldiElaEco
Do Until proposals.EOF
  WScript.Echo proposals("CONTO") & " " & proposals("PERIODO") & " " & proposals("IMPORTO") & " " & proposals("SOVRASCRIVI")
  proposals("SOVRASCRIVI") = 1
  proposals.MoveNext
Loop
budget.BdgElaEco_ScriviBudget_DaRstSaldiElaEco
Tell "written"
WScript.Echo listener.Heard
listener.Stop
WScript.Echo "end"
