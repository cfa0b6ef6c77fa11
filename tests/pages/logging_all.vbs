' Calls every member of LOGGING as a page does, prints what each returned, then the log.
' Argument: the folder to write into; it gets a new folder of this page's own. In what is printed a
' stamp is "@" at the start of a line, a line end of the text is "|", and values of the machine
' are <...>.
Option Explicit

Class PageRequest
  Public ServerVariables
  Private Sub Class_Initialize
    Set ServerVariables = CreateObject("Scripting.Dictionary")
    ServerVariables.Add "ALL_HTTP", "HTTP_USER_AGENT:Browser/1.0"
    ServerVariables.Add "REMOTE_ADDR", "10.1.2.3"
    ServerVariables.Add "PATH_TRANSLATED", folder & "\Page.asp"
    ServerVariables.Add "REQUEST_METHOD", "GET"
    ServerVariables.Add "HTTP_USER_AGENT", "Browser/1.0"
    ServerVariables.Add "URL", "/Page.asp"
    ServerVariables.Add "QUERY_STRING", "a=1&b=2"
  End Sub
End Class

Class PageServer
  Public Function MapPath(path)
    MapPath = folder
  End Function
End Class

Class PageContext
  Public Session
  Public Application
  Public Request
  Public Response
  Public Server
  Private Sub Class_Initialize
    Set Session = New PageServer
    Set Application = New PageServer
    Set Request = New PageRequest
    Set Response = New PageServer
    Set Server = New PageServer
  End Sub
End Class

Dim stamp
Set stamp = New RegExp
stamp.Global = True
stamp.Pattern = "\n?\d\d \S+ \d{4} \d\d:\d\d:\d\d\.\d{3} \S* \S* \d+ "

Dim platformRow
Set platformRow = New RegExp
platformRow.Pattern = "((Machine Name|Operating System[A-Za-z ]*|Service Pack Identifier|" & _
  "Microsoft IIS Version|[A-Za-z ]+ Version|Network IP Address) \.+ )[^|]*"

Dim valueOfRow
Set valueOfRow = New RegExp
valueOfRow.Pattern = "( \.+ )[^|]*"

' Rows that depend on the machine: those of drivers and files become one line, those of folders
' lose their values and, after they were shown once, become one line too.
Dim section
Dim areFoldersShown
areFoldersShown = False

Sub BeginSection(name)
  section = name
  If name <> "folders" Or areFoldersShown Then WScript.Echo "<" & name & ">"
End Sub

Sub EndSection
  If section = "folders" Then areFoldersShown = True
  section = ""
End Sub

Sub PrintLine(line)
  If InStr(line, "IN_szDirectory ") > 0 And InStr(line, "<here>") = 0 Then
    WScript.Echo valueOfRow.Replace(line, "$1<folder>")
    BeginSection "files"
  ElseIf InStr(line, "@") <> 1 Or Not (valueOfRow.Test(line) Or InStr(line, vbTab) > 0) Then
    EndSection
    WScript.Echo platformRow.Replace(line, "$1<value>")
    If InStr(line, "ODBC Drivers") > 0 Then BeginSection "drivers"
    If InStr(line, "LogOSInfo") > 0 Then BeginSection "folders"
  ElseIf section = "folders" And Not areFoldersShown Then
    WScript.Echo valueOfRow.Replace(line, "$1<folder>")
  ElseIf section = "" Then
    WScript.Echo platformRow.Replace(line, "$1<value>")
  End If
End Sub

Sub PrintText(text)
  Dim lines
  Dim i
  lines = Replace(Replace(text & "", folder, "<here>"), vbCrLf, "|" & vbLf)
  lines = Split(stamp.Replace(lines, vbLf & "@"), vbLf)
  section = ""
  For i = 0 To UBound(lines)
    If lines(i) <> "" Then PrintLine lines(i)
  Next
  EndSection
End Sub

' The result and, for a report, the text it handed back.
Sub Show(member, result)
  WScript.Echo "== " & member
  PrintText result
End Sub

Sub ShowReport(member, result)
  WScript.Echo "== " & member & ": " & TypeName(result) & " " & result
  PrintText out
  out = Empty
End Sub

Dim files
Set files = CreateObject("Scripting.FileSystemObject")
Dim folder
folder = WScript.Arguments(0) & "\logging_vbs"
If files.FolderExists(folder) Then files.DeleteFolder folder
files.CreateFolder folder
files.CreateTextFile(folder & "\Page.asp").Close

Dim log
Set log = CreateObject("QUENDAL_REPORTS_ASP.LOGGING")
log.OnStartPage New PageContext

Show "IsASP", log.IsASP
Show "Path", log.Path
Show "FileName", log.FileName
Show "RemoteIP", log.RemoteIP
Show "LogLevel", log.LogLevel
Show "RolloverBytes", log.RolloverBytes
Show "Unicode", log.Unicode
Show "OSInfo", TypeName(log.OSInfo) & " " & (log.OSInfo Is log.OSInfo)
Show "ODBCDrivers", (log.ODBCDrivers.Count >= 0) & " " & (log.ODBCDrivers Is log.ODBCDrivers)
Show "UserName, ComputerName, PID, ThreadID", TypeName(log.UserName) & " " & _
  TypeName(log.ComputerName) & " " & TypeName(log.PID) & " " & TypeName(log.ThreadID)

Show "WriteASPStart", log.WriteASPStart
Dim repeat
repeat = 3
Dim lineStamp
Show "WriteLog", log.WriteLog(2, "Hello", repeat, lineStamp)
Show "WriteLog, stamp", lineStamp
repeat = 0
Show "WriteLog, two lines", log.WriteLog(2, "one" & vbCrLf & "two", repeat)
Show "WriteLog, repeat", repeat
Show "WriteLog, filtered out", log.WriteLog(3, "unseen")
log.LogLevel = 3
Show "WriteLog, no longer", log.WriteLog(3, "seen")
log.LogLevel = 2
Show "WriteBox", log.WriteBox(2, "A text in a box")
On Error Resume Next
log.WriteBox 3, "unseen"
Show "WriteBox, filtered out", Err.Number & " " & Err.Source & ": " & Err.Description
Show "Catch", log.Catch(Err, "caught", 2)
Show "Catch, nothing pending", log.Catch(Err)
Show "LogMSError", log.LogMSError(2, Err, "logged")
On Error Goto 0
Show "StartGroup", log.StartGroup(2)
Show "WriteParam", log.WriteParam(2, "Name", 12.5)
Show "WriteParam, narrow", log.WriteParam(2, "*** ERROR *** Name", "a" & vbCrLf & "b", 20, 2)
Show "EndGroup", log.EndGroup(2)
Show "Dump", log.Dump(2, "first" & vbCrLf & "second")
Show "WriteError", log.WriteError(2, "wrong", 2)

Class ParserError
  Public errorCode
  Public url
  Public line
  Public linepos
  Public reason
  Public srcText
End Class
Class XmlDocument
  Public parseError
End Class
Dim document
Set document = New XmlDocument
Set document.parseError = New ParserError
document.parseError.errorCode = 0
Show "LogXMLError, none", log.LogXMLError(2, document, "unseen")
document.parseError.errorCode = -1072896659
document.parseError.url = Null
document.parseError.line = 2
document.parseError.linepos = 14
document.parseError.reason = "An end tag is missing."
document.parseError.srcText = "<b>"
Show "LogXMLError", log.LogXMLError(2, document, "parsed")

Dim out
ShowReport "LogConfiguration", log.LogConfiguration(out)
ShowReport "LogSystemInfo", log.LogSystemInfo(out)
ShowReport "LogODBCDrivers", log.LogODBCDrivers(out)
ShowReport "LogServerVariables", log.LogServerVariables(out)
ShowReport "LogFileVersionInfo", log.LogFileVersionInfo(folder & "\none", out)
ShowReport "LogWebApplicationDLLInfo", log.LogWebApplicationDLLInfo(out)
ShowReport "LogOSInfo", log.LogOSInfo(out)
Dim outer
Dim inner
Set inner = CreateObject("Scripting.Dictionary")
inner.Add 7, True
Set outer = CreateObject("Scripting.Dictionary")
outer.Add "text", "value"
outer.Add "inner", inner
outer.Add "null", Null
ShowReport "LogDictionary", log.LogDictionary(outer, , , out)
outer.Add "itself", outer
On Error Resume Next
log.LogDictionary outer, "Endless", 1, out
ShowReport "LogDictionary, nested in itself", Err.Number & " " & Err.Description
On Error Goto 0
outer.RemoveAll
out = "before: "
ShowReport "LogDiagnostics", log.LogDiagnostics(out)

Show "WriteASPEnd", log.WriteASPEnd
log.OnEndPage
On Error Resume Next
log.WriteLog 2, "after the page"
Show "after OnEndPage", Err.Number & " " & log.IsASP
On Error Goto 0
Dim logFile
logFile = log.Path & log.FileName
WScript.Echo "== THE LOG"
PrintText files.OpenTextFile(logFile, 1, False, -1).ReadAll

log.Class_Initialize
Show "Class_Initialize", log.IsASP
log.Unicode = False
log.RolloverBytes = 100000
log.SetLogPath folder & "\"
log.SetLogFile "Second.txt"
log.WriteLog 2, "in the code page"
log.Class_Terminate
Show "Class_Terminate", log.OSInfo Is Nothing
WScript.Echo "== THE SECOND LOG"
Dim text
text = files.OpenTextFile(folder & "\Second.txt").ReadAll
PrintText Mid(text, InStr(text, "in the code page"))
