<!--#include file="cycle_b.inc"-->
