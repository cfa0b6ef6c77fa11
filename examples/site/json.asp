<%@ Language="VBScript" CodePage="65001" %>
<% Option Explicit %>
<!--#include file="shared/layout.inc" -->
<!--#include file="shared/files.inc" -->
<!--#include file="shared/source.inc" -->
<%
BeginPage "JSON in, JSON out", _
  "A text becomes dictionaries and arrays, the things a page script has anyway. Whatever they hold " & _
  "becomes a text again."

BeginExample "Decode", "snippets/json_decode.inc", _
  "Objects become dictionaries, in the order of the text; arrays become arrays. " & _
  "The text is <a href=""data/order.json"">data/order.json</a>."
%>
<!--#include file="snippets/json_decode.inc" -->
<%
EndExample
BeginExample "Change and encode", "snippets/json_change.inc", _
  "Values are changed as in any dictionary, and encoded without losing a character."
%>
<!--#include file="snippets/json_change.inc" -->
<%
EndExample
BeginExample "What is no JSON", "snippets/json_errors.inc", _
  "Raises error 8732, which says what was expected. A page traps it like any other."
%>
<!--#include file="snippets/json_errors.inc" -->
<%
EndExample

Dim own, encoded
own = Request.Form("json")
If own = "" Then own = "{""greeting"": ""\u3053\u3093\u306b\u3061\u306f"", ""counts"": [1, 2.50, -3e2]}"
%>
<section class="example" id="own">
  <h2>Your own</h2>
  <p>Decode a text and see what the encoder makes of it.</p>
  <div class="pair">
    <form class="code" method="post" action="#own">
      <label for="json">JSON text</label>
      <textarea id="json" name="json" rows="6" spellcheck="false"><%= Server.HTMLEncode(own) %></textarea>
      <button>Decode and encode</button>
    </form>
    <figure class="result"><figcaption>Result</figcaption><div>
<%
On Error Resume Next
encoded = functions.JSON.Encode(functions.JSON.Decode(own))
If Err.Number = 0 Then
  Response.Write "<pre class=""output"">" & Server.HTMLEncode(encoded) & "</pre>"
Else
  Response.Write "<p class=""error-note"">" & Err.Number & ": " & Server.HTMLEncode(Err.Description) & "</p>"
End If
On Error GoTo 0
%>
    </div></figure>
  </div>
</section>
<% EndPage %>
