"""Reads SQL Server statements, one a line, with a parser that is not ours; prints those that it does not take.

The parser takes words of other dialects too: functions and operators that SQL Server does not have are looked for among
its tokens.
"""
import sys

from sqlglot import exp, parse, tokens
from sqlglot.dialects.tsql import TSQL

FUNCIONES = set(
    "COUNT SUM AVG MIN MAX ISNULL COALESCE NULLIF UPPER LOWER LTRIM RTRIM SUBSTRING LEN ABS ROUND CAST IN EXISTS AND OR "
    "NOT VALUES WHERE FROM ON THEN ELSE BY SELECT AS".split()
)
AJENAS = {tokens.TokenType.LIMIT, tokens.TokenType.ILIKE, tokens.TokenType.DPIPE, tokens.TokenType.COLLATE}


def falta(texto):
    """Why SQL Server would not take it; None when it would."""
    arbol = parse(texto, read="tsql")
    if len(arbol) != 1 or not isinstance(arbol[0], (exp.Select, exp.Union, exp.Insert, exp.Update, exp.Delete)):
        return "not one statement"
    fichas = TSQL().tokenizer.tokenize(texto)
    for i, ficha in enumerate(fichas):
        if ficha.token_type in AJENAS:
            return ficha.text
        llama = i + 1 < len(fichas) and fichas[i + 1].token_type == tokens.TokenType.L_PAREN
        tabla = i > 0 and fichas[i - 1].text.upper() in ("INTO", "INSERT")
        if llama and not tabla and ficha.text[:1].isalpha() and ficha.text.upper() not in FUNCIONES:
            return "function " + ficha.text
    return None


leidas = 0
for linea in open(sys.argv[1], encoding="utf-8"):
    try:
        motivo = falta(linea)
    except Exception as error:  # the parser's
        motivo = str(error).split("\n")[0]
    leidas += 1
    if motivo:
        print(motivo, "--", linea, end="")
print(leidas)
