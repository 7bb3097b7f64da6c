"""What the measuring scripts share: a PostgreSQL server of their own, and bench_pedidos, which does what is measured."""
import os
import pathlib
import sqlite3
import subprocess
import tempfile

RAIZ = pathlib.Path(__file__).resolve().parent.parent
SERVIDOR = RAIZ / "tests" / "postgres" / "servidor"


class Servidor:
    """The tests' server, in a folder of its own; gone at the end. durable: commits wait for the disk, as a hotel's do."""

    def __init__(self, durable=False):
        self.puerto = 9000 + os.getpid() % 11000
        self.carpeta = pathlib.Path(tempfile.gettempdir()) / f"kv207-bench-{self.puerto}"
        self.durable = durable

    def __enter__(self):
        subprocess.run([SERVIDOR, "arranca", self.carpeta], check=True)
        # The memory of a hotel's server, not that of the tests'.
        self.sql("postgres", "ALTER SYSTEM SET shared_buffers = '512MB'")
        if self.durable:
            for cual in ("fsync", "full_page_writes"):
                self.sql("postgres", f"ALTER SYSTEM SET {cual} = on")
        for orden in ("mata", "sigue"):
            subprocess.run([SERVIDOR, orden, self.carpeta], check=True)
        return self

    def __exit__(self, *_):
        subprocess.run([SERVIDOR, "detiene", self.carpeta], check=True)

    @property
    def socket(self):
        return f"{self.carpeta}/.s.PGSQL.{self.puerto}"

    def direccion(self, base):
        return f"postgresql://hotel@/{base}?port={self.puerto}&host={self.carpeta}"

    def sql(self, base, sentencia):
        return subprocess.run(["psql", "-X", "-A", "-t", "-q", "-v", "ON_ERROR_STOP=1", "-c", sentencia,
                               self.direccion(base)], check=True, text=True, capture_output=True).stdout

    def copia(self, binarios, archivo, base):
        """Carries the hotel of a file into a new database: past its guards, whose tables follow from the rest."""
        self.sql("postgres", f"CREATE DATABASE {base}")
        subprocess.run([binarios / "reservas-base", "crea", self.direccion(base)], check=True, stdout=subprocess.DEVNULL)
        psql = subprocess.Popen(["psql", "-X", "-q", "-v", "ON_ERROR_STOP=1", self.direccion(base)], text=True,
                                encoding="utf-8", stdin=subprocess.PIPE)
        psql.stdin.write("SET session_replication_role = replica;\n")
        with sqlite3.connect(f"file:{archivo}?mode=ro", uri=True) as c:
            for tabla, in c.execute("SELECT name FROM sqlite_master WHERE type = 'table' AND name NOT LIKE 'sqlite%'"):
                columnas = ", ".join(f[1] for f in c.execute(f"PRAGMA table_info({tabla})"))
                psql.stdin.write(f"DELETE FROM {tabla};\nCOPY {tabla} ({columnas}) FROM stdin;\n")
                for fila in c.execute(f"SELECT {columnas} FROM {tabla}"):
                    psql.stdin.write("\t".join(map(como_copia, fila)) + "\n")
                psql.stdin.write("\\.\n")
        psql.stdin.write(SIGUE_NUMERANDO)
        # The nights that are sold, from the parameter's guard; their constraint is built faster at once.
        una = "CONSTRAINT Noche_Vendida_Una_Vez"
        psql.stdin.write(f"""SET session_replication_role = origin;
            ALTER TABLE Noche_Vendida DROP {una};
            UPDATE Parametro SET Pm_Valor = '0' WHERE Pm_Clave = 'HT_OVER_BOOKING';
            ALTER TABLE Noche_Vendida ADD {una} EXCLUDE USING gist (Nv_Habitacion WITH &&, Nv_Noches WITH &&);
            VACUUM ANALYZE;
            """)
        psql.stdin.close()
        if psql.wait() != 0:
            raise SystemExit(f"{archivo} could not be carried over")
        return self.direccion(base)


# Numbers that the server assigns go on behind those that came with the rows.
SIGUE_NUMERANDO = """DO $$ DECLARE c record; BEGIN
  FOR c IN SELECT table_name t, column_name n FROM information_schema.columns WHERE is_identity = 'YES' LOOP
    EXECUTE format('SELECT setval(pg_get_serial_sequence(%L, %L), COALESCE(MAX(%I), 0) + 1) FROM %I', c.t, c.n, c.n, c.t);
  END LOOP;
END $$;
"""


def como_copia(valor):
    if valor is None:
        return "\\N"
    return str(valor).replace("\\", "\\\\").replace("\t", "\\t").replace("\n", "\\n").replace("\r", "\\r")


class Pedidos:
    def __init__(self, binarios, hotel, empleado=0):
        self.proceso = subprocess.Popen([binarios / "bench_pedidos", str(hotel), str(empleado)], text=True,
                                        stdin=subprocess.PIPE, stdout=subprocess.PIPE)

    def pide(self, orden):
        self.proceso.stdin.write(orden + "\n")
        self.proceso.stdin.flush()

    def oye(self):
        """The answer's numbers."""
        linea = self.proceso.stdout.readline()
        if not linea:
            raise SystemExit(f"bench_pedidos ended with {self.proceso.wait()}")
        return [float(n) for n in linea.split()]

    def di(self, orden):
        self.pide(orden)
        return self.oye()

    def cierra(self):
        self.proceso.stdin.close()
        self.proceso.wait()


def hotel(binarios, dias, carpeta):
    """A file with so many days of history, made when it is missing; it and its number of room lines."""
    archivo = pathlib.Path(carpeta) / f"hotel-{dias}.db"
    constructor = Pedidos(binarios, archivo)
    lineas = int(constructor.di(f"construye {dias}")[0])
    constructor.cierra()
    return archivo, lineas
