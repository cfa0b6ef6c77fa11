' A page's run, as a classic ASP page would write it. The script host has no web server, so the page
' context that the server would hand over is made of small classes here. The folder of the page is
' the script's argument.
Option Explicit

Class PageRequest
  Public Function ServerVariables(name)
    ServerVariables = ""
    If name = "REMOTE_ADDR" Then ServerVariables = "10.1.2.3"
    If name = "PATH_TRANSLATED" Then ServerVariables = WScript.ScriptFullName
    If name = "REQUEST_METHOD" Then ServerVariables = "GET"
    If name = "HTTP_USER_AGENT" Then ServerVariables = "Mozilla/5.0 (demo)"
    If name = "URL" Then ServerVariables = "/reports/default.asp"
    If name = "QUERY_STRING" Then ServerVariables = "report=7&lang=en"
  End Function
End Class

Class PageServer
  Public Function MapPath(path)
    MapPath = WScript.Arguments(0)
  End Function
End Class

Class PageObject
End Class

Class PageContext
  Public Session
  Public Application
  Public Request
  Public Response
  Public Server
  Private Sub Class_Initialize()
    Set Session = New PageObject
    Set Application = New PageObject
    Set Request = New PageRequest
    Set Response = New PageObject
    Set Server = New PageServer
  End Sub
End Class

Dim logger, stamp, repeat
Set logger = CreateObject("QUENDAL_REPORTS_ASP.LOGGING")
logger.OnStartPage New PageContext
WScript.Echo TypeName(logger) & " writes " & logger.FileName & " for " & logger.RemoteIP

logger.WriteASPStart
WScript.Echo "returned: " & logger.WriteLog(2, "Loading the report", 1, stamp)
WScript.Echo "stamp:    " & stamp
logger.StartGroup 2
logger.WriteParam 2, "Report", 7
logger.WriteParam 2, "Title", "Turnover, " & Chr(128)
logger.WriteLog 3, "too fine for the level: not written"
repeat = 0
logger.WriteLog 1, "Two lines:" & vbCrLf & "the second has the prefix too", repeat
WScript.Echo "repeat was raised to " & repeat

On Error Resume Next
Err.Raise 11, "default.asp", "Division by zero"
logger.LogMSError 2, Err, "The total could not be computed"
On Error GoTo 0

logger.EndGroup 2
logger.LogConfiguration
logger.WriteASPEnd
logger.OnEndPage
WScript.Echo "end of page"
