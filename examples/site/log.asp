<%@ Language="VBScript" CodePage="65001" %>
<% Option Explicit %>
<!--#include file="shared/layout.inc" -->
<!--#include file="shared/files.inc" -->
<!--#include file="shared/log.inc" -->
<!--#include file="shared/runs.inc" -->
<%
' What this page reads, and for whom. No path comes from the request.
Const LOG_FOLDER = "LOGS"          ' beside this page, or a whole path as "D:\Logs"
Const LOG_FILE = "LOG.TXT"
Const READERS = "127.0.0.1 ::1"    ' addresses of clients, or "*" for everybody. Behind a proxy on this
                                   ' machine, which all requests come from, have the page sign in its
                                   ' readers instead.
Const FIRST_LINES = 3000           ' as many of the newest lines show at first

If Not IsReader() Then
  Response.Status = "403 Forbidden"
  Response.ContentType = "text/plain"
  Response.Write "This page shows the log to the server's own browser only."
  Response.End
End If

Dim functions, archives, file, wanted, onlyErrors, limit, runs, total
Set functions = Server.CreateObject("QUENDAL_REPORTS_ASP.FUNCTIONS")
Set archives = LogFiles(functions, LogFolder())
file = Request.QueryString("file")
If Not archives.Exists(file) Then file = LOG_FILE
wanted = Request.QueryString("text")
onlyErrors = (Request.QueryString("errors") = "1")
limit = LinesWanted()

BeginPage "The log, newest run first", _
  "What went wrong, when, and for whom: every run of a page with its lines. Runs with errors are " & _
  "marked and open."
If archives.Exists(file) Then
  total = ReadRuns(TextOfLog(LogFolder() & file), limit, runs)
Else
  Set runs = Server.CreateObject("Scripting.Dictionary")
End If
%>
<form method="get" class="reader">
  <div><label for="file">Log</label>
    <select id="file" name="file"><% WriteFiles functions, archives, file %></select></div>
  <div><label for="text">With the text</label>
    <input type="text" id="text" name="text" value="<%= Server.HTMLEncode(wanted) %>"></div>
  <label class="check"><input type="checkbox" name="errors" value="1"<% If onlyErrors Then Response.Write " checked" %>>
    Only runs with errors</label>
  <button>Show</button>
</form>
<%
If archives.Count = 0 Then
  Response.Write "<p>There is no log yet in <code>" & Server.HTMLEncode(LogFolder()) & "</code>.</p>"
Else
  WriteRuns runs, wanted, onlyErrors
  If total > limit Then WriteMore file, wanted, onlyErrors, limit, total
End If
EndPage
%>
<script language="VBScript" runat="server">
' A request that someone else forwards is nobody's own.
Function IsReader()
  IsReader = READERS = "*" Or _
    (InStr(" " & READERS & " ", " " & Request.ServerVariables("REMOTE_ADDR") & " ") > 0 And _
     Request.ServerVariables("HTTP_X_FORWARDED_FOR") = "")
End Function

Function LogFolder()
  LogFolder = LOG_FOLDER
  If InStr(LOG_FOLDER, ":") = 0 And Left(LOG_FOLDER, 2) <> "\\" Then LogFolder = Server.MapPath(LOG_FOLDER)
  If Right(LogFolder, 1) <> "\" Then LogFolder = LogFolder & "\"
End Function

' Between the first lines and as many as one page can hold.
Function LinesWanted()
  LinesWanted = FIRST_LINES
  If IsNumeric(Request.QueryString("lines")) And Len(Request.QueryString("lines")) < 7 Then
    LinesWanted = Server.CreateObject("QUENDAL_REPORTS_ASP.FUNCTIONS"). _
      Max(FIRST_LINES, CLng(Request.QueryString("lines")))
  End If
End Function
</script>
