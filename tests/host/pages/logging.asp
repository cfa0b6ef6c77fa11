<%@ CodePage=65001 %>
<%
' A page's run with its log, which the page shows itself.
Dim logger, files, stream, line, at
Set logger = Server.CreateObject("QUENDAL_REPORTS_ASP.LOGGING")
Response.Write TypeName(logger) & " " & logger.IsASP & " " & logger.RemoteIP & " " & Replace(logger.Path, Server.MapPath("."), "~") & vbCrLf
Set files = Server.CreateObject("Scripting.FileSystemObject")
If files.FileExists(logger.Path & logger.FileName) Then files.DeleteFile logger.Path & logger.FileName
logger.WriteASPStart
logger.LogServerVariables
Set stream = files.OpenTextFile(logger.Path & logger.FileName, 1, False, -1)
Do Until stream.AtEndOfStream
  line = stream.ReadLine
  at = InStr(line, "10.9.8.7 LOGGING.ASP")
  If at > 0 Then Response.Write Replace(Mid(line, at), Server.MapPath("/"), "~") & vbCrLf
Loop
stream.Close
%>
