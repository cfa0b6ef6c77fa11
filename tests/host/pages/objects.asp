<%@ Language="VBScript" CodePage=65001 %><!--#include file="parts/tools.inc"-->
<% ' The five objects as VBScript sees them.
Dim name, value
title "Request"
show "q", Request.QueryString("q") & "; " & Request.QueryString("Q").Count & "; " & Request.QueryString("q")(2)
For Each name In Request.QueryString
  For Each value In Request.QueryString(name)
    show "each " & name, value
  Next
Next
show "form", Request.Form("word") & " " & Request.Form("Empty") & ". " & Request.Form.Count
show "cookies", Request.Cookies("plain") & " " & Request.Cookies("user")
show "any collection", Request("word") & Request("n") & Request("plain") & Request("REQUEST_METHOD")
For Each name In Array("CONTENT_LENGTH", "MY_OWN")
  show name, Request.ServerVariables(name)
Next
On Error Resume Next
value = Request.QueryString(9)
show "beyond the end", Err.Number & " " & Err.Description
Err.Clear
On Error GoTo 0

title "Server"
show "map", Replace(Server.MapPath("parts/../x.txt") & Server.MapPath("/a/b.asp"), Server.MapPath("."), "~")
show "html", Server.HTMLEncode("<a href=""x"">&é</a>")
On Error Resume Next
Server.MapPath "../outside.txt"
show "outside", Err.Number & " " & Err.Description
Err.Clear
Server.CreateObject "No.Such.Class"
show "unknown class", Err.Number & " " & Err.Description
On Error GoTo 0
Dim document
Set document = Server.CreateObject("MSXML2.DOMDocument.3.0")
show "a component with a site", document.loadXML("<a>1</a>") & " " & document.text

title "Session and Application"
Session("Name") = "Ann"
Session("list") = Array(1, 2, 3)
show "session", Session("name") & " " & UBound(Session("LIST")) & " " & Session.Contents.Count & " " & Session.SessionID
Session.Contents.Remove "list"
Application("hits") = Application("hits") + 1
For Each name In Session.Contents
  show "left", name & " " & Application("hits")
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
On Error Resume Next
Response.AddHeader "X-Two", "a" & vbCrLf & "X-Three: b"
show "one line", Err.Number
Response.Status = "many"
show "a status", Err.Number & " " & Response.Status
Response.Flush
Response.Write "this goes"
Response.Clear
Response.AddHeader "X-Late", "no"
show "after the headers", Err.Number
Response.End
Response.Write "not seen"
%>
not seen either
