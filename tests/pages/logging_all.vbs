' A page's log where only the script host can show it: with the host's own objects for the page and its
' error, a variable that gathers texts, and the file as another program reads it.
' Argument: the folder to write into; it gets a new folder of this page's own. Stamps print as "@".
Option Explicit

Class PageObject
  Public Session
  Public Application
  Public Request
  Public Response
  Public Server
  Public ServerVariables
  Public Function MapPath(path)
    MapPath = folder
  End Function
End Class

Dim files, folder, page, context, log, out, inner, outer

Sub Show(label, text)
  Dim stamp
  Set stamp = New RegExp
  stamp.Global = True
  stamp.Pattern = "\d\d \S+ \d{4} \d\d:\d\d:\d\d\.\d{3} \S* \S* \d+ "
  WScript.Echo label & ": " & TypeName(text) & " " & stamp.Replace(Replace(text & "", folder, "~"), "@")
End Sub

Set files = CreateObject("Scripting.FileSystemObject")
folder = WScript.Arguments(0) & "\logging_vbs"
If files.FolderExists(folder) Then files.DeleteFolder folder
files.CreateFolder folder
files.CreateTextFile(folder & "\Page.asp").Close
files.CreateFolder folder & "\LOGS"
files.CreateTextFile(folder & "\LOGS\LOG.TXT", False, True).Close  ' so that no banner is written

Set page = New PageObject
Set page.ServerVariables = CreateObject("Scripting.Dictionary")
page.ServerVariables.Add "REMOTE_ADDR", "10.1.2.3"
page.ServerVariables.Add "PATH_TRANSLATED", folder & "\Page.asp"
page.ServerVariables.Add "REQUEST_METHOD", "GET"
page.ServerVariables.Add "URL", "/Page.asp"
page.ServerVariables.Add "HTTP_USER_AGENT", Empty
page.ServerVariables.Add "QUERY_STRING", ""
Set context = New PageObject
Set context.Session = page
Set context.Application = page
Set context.Request = page
Set context.Response = page
Set context.Server = page

Set log = CreateObject("QUENDAL_REPORTS_ASP.LOGGING")
log.OnStartPage context
Show "path", log.Path & log.FileName
log.WriteASPStart
On Error Resume Next
log.WriteBox 3, "filtered out"
Show "box", Err.Number & " " & Err.Source & ": " & Err.Description
log.Catch Err, "caught", 2
Show "nothing pending", log.Catch(Err)
log.LogMSError 2, Err
log.LogXMLError 3, page
Show "no XML document", Err.Number
On Error GoTo 0

Set inner = CreateObject("Scripting.Dictionary")
inner.Add 7, True
Set outer = CreateObject("Scripting.Dictionary")
outer.Add "inner", inner
outer.Add "nothing", Null
out = 5
Show "status", log.LogDictionary(outer, , , out)
log.LogServerVariables out
Show "reports", out
log.OnEndPage
Show "log", files.OpenTextFile(log.Path & log.FileName, 1, False, -1).ReadAll

log.Class_Initialize
log.Unicode = False
log.SetLogPath folder & "\"
log.SetLogFile "Second.txt"
log.WriteLog 2, "in the code page"
Show "second log", Right(files.OpenTextFile(folder & "\Second.txt").ReadAll, 18)
log.Class_Terminate
Show "terminated", log.OSInfo Is Nothing
