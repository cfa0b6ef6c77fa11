<p>
<% Dim one(1)
   Response.Write one(2) %>