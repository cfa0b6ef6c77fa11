' From a page to the DLL and back, against the same call of an object of the platform.
Option Explicit
Const CALLS = 50000

Sub Row(name, ours, peer)
  WScript.Echo name & "|" & ours & "|" & peer
End Sub

Dim logger, dictionary, i, value, start, ours, peer
Set logger = CreateObject("QUENDAL_REPORTS_ASP.LOGGING")
Set dictionary = CreateObject("Scripting.Dictionary")
start = Timer
For i = 1 To CALLS
  value = logger.LogLevel
Next
ours = (Timer - start) * 1000000 / CALLS
start = Timer
For i = 1 To CALLS
  value = dictionary.Count
Next
peer = (Timer - start) * 1000000 / CALLS
Row "page to DLL round trip", ours, peer

Dim builder, text
Set builder = CreateObject("QUENDAL_REPORTS_ASP.FUNCTIONS").Concat
start = Timer
For i = 1 To CALLS
  builder.Append "piece " & i
Next
text = builder.Value
ours = (Timer - start) * 1000000 / CALLS
start = Timer
text = ""
For i = 1 To CALLS
  text = text & "piece " & i
Next
peer = (Timer - start) * 1000000 / CALLS
Row "page: append against s = s & piece", ours, peer
