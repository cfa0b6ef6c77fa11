<%@ Language=JScript CodePage=65001 %>
<%
// What JScript sees otherwise, with functions of the other language.
var names = [];
for (var e = new Enumerator(Request.QueryString); !e.atEnd(); e.moveNext()) names.push(e.item());
%>
names: <%= names.join() %>
q: <%= Request.QueryString("q") %>, <%= Request.QueryString("q").Count %>, <%= Request.QueryString("q")(2) %>
none: <%= typeof Request.QueryString("none") %>
<% for (var i = 0; i < 3; i++) { %><b><%= i %></b><% } %>
twice: <%= twice(21) %>, <%= own(4) %>
<%
Session.Contents.Item("kept") = "in the session";
Response.Write(Session("Kept") + "\n");
try { Session.Contents.Item("object") = Response; } catch (error) { Response.Write("error " + (error.number & 0xFFFF) + "\n"); }
try { Response.End(); } catch (error) { Response.Write("not seen"); }
%>
not seen
<script runat="server" language="VBScript">
Function twice(x)
  twice = x * 2
End Function
</script>
<SCRIPT language="JScript" RUNAT="Server">
function own(x) { return x * x; }
</SCRIPT>
