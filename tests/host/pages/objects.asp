<%@ Language="VBScript" CodePage=65001 %><!--#include file="parts/tools.inc"-->
<% ' The five objects as VBScript sees them.
Dim name, value
title "Request"
show "query", Request.QueryString
show "q, joined", Request.QueryString("q")
show "q, in any case, counted", Request.QueryString("Q").Count
show "q, second value", Request.QueryString("q")(2)
show "by position", Request.QueryString(2)
show "name by position", Request.QueryString.Key(2)
show "missing is empty", IsEmpty(Request.QueryString("none"))
show "as a number", Request.QueryString("n") + 1
For Each name In Request.QueryString
  For Each value In Request.QueryString(name)
    show "each " & name, value
  Next
Next
show "form", Request.Form("word") & " " & Request.Form("Empty") & "."
show "form count", Request.Form.Count
show "cookie", Request.Cookies("plain")
show "cookie with keys", Request.Cookies("user").HasKeys & " " & Request.Cookies("user")("lang")
show "any collection", Request("word") & Request("n") & Request("plain") & Request("REQUEST_METHOD")
show "total bytes", Request.TotalBytes
For Each name In Array("REQUEST_METHOD", "CONTENT_TYPE", "CONTENT_LENGTH", "PATH_INFO", "URL", "REMOTE_ADDR", "MY_OWN")
  show name, Request.ServerVariables(name)
Next
On Error Resume Next
show "beyond the end", Request.QueryString(9)
If Err Then show "position error", Err.Number & " " & Err.Description
Err.Clear
Request.Nothing
show "member error", Err.Number
On Error GoTo 0

title "Server"
show "map", Replace(Server.MapPath("."), Server.MapPath("/"), "~")
show "map file", Replace(Server.MapPath("parts/../x.txt"), Server.MapPath("/"), "~")
show "map from the root", Replace(Server.MapPath("/a/b.asp"), Server.MapPath("/"), "~")
show "html", Server.HTMLEncode("<a href=""x"">&é</a>")
show "url", Server.URLEncode("a b/é?")
show "time-out", Server.ScriptTimeout
Server.ScriptTimeout = 60
show "time-out", Server.ScriptTimeout
On Error Resume Next
Server.MapPath "../outside.txt"
show "outside", Err.Number & " " & Err.Description
Err.Clear
Server.CreateObject "No.Such.Class"
show "unknown class", Err.Number & " " & Err.Description
Err.Clear
On Error GoTo 0
Dim document
Set document = Server.CreateObject("MSXML2.DOMDocument.3.0")
show "a component with a site", document.loadXML("<a>1</a>") & " " & document.text

title "Session and Application"
Session("Name") = "Ann"
Session("list") = Array(1, 2, 3)
show "session", Session("name") & " " & UBound(Session("LIST")) & " " & Session.Contents.Count
show "session id", Session.SessionID > 0
Session.Contents.Remove "list"
show "removed", IsEmpty(Session("list"))
Application.Lock
Application("hits") = Application("hits") + 1
Application.Unlock
show "application", Application("hits")
For Each name In Application.Contents
  show "each", name
Next
On Error Resume Next
Set Session("object") = document
show "objects stay with their page", Err.Number <> 0
On Error GoTo 0

title "Response"
Response.Status = "201 Created"
Response.ContentType = "text/plain"
Response.Charset = "utf-8"
Response.AddHeader "X-Own", "yes"
Response.Cookies("plain") = "a b;é"
Response.Cookies("plain").Path = "/x"
Response.Cookies("plain").HttpOnly = True
Response.Cookies("plain").Expires = #15 Nov 2026 12:00:00#
Response.Cookies("other") = 1
show "type", Response.ContentType & " " & Response.Charset & " " & Response.Status
On Error Resume Next
Response.AddHeader "X-Two", "a" & vbCrLf & "X-Three: b"
show "one line", Err.Number
Response.Status = "many"
show "a status", Err.Number
On Error GoTo 0
Response.Flush
Response.Write "this goes"
Response.Clear
On Error Resume Next
Response.Status = "404 Not Found"
show "after the headers", Err.Number
Response.End
Response.Write "not seen"
%>
not seen either
