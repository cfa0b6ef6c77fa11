text
<% Response.Write "no end"
