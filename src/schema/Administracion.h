#pragma once

#include <QString>
#include <QStringList>
#include <QTextStream>

namespace korven {
class StoreDirectory;
}

namespace korven::schema {

// The work of the administration tool korven-admin, kept apart from its main() so that the
// tests run it without a process. Each command answers the exit code of the program: 0 done,
// 1 failed (the message says why), 2 the command line was not understood.
//
//   crear       [--config F] [--datos D] [--demo] [--sin-datos]
//   actualizar  [--config F]
//   demo        [--config F] [--datos D]
//   importar    <tabla> <archivo.csv> [--config F] [--parcial] [--reemplazar]
//   listar      <tabla> [--config F] [--entidad E] [--columnas a,b] [--limite N]
//   estado      [--config F]
//   unificar    [--config F]
//   respaldo    <archivo> [--config F]
//   restaurar   <archivo> [--config F]
//   ayuda
class Administracion {
public:
    static constexpr int Correcto = 0;
    static constexpr int Fallo = 1;
    static constexpr int Uso = 2;

    Administracion(QTextStream& salida, QTextStream& errores, QString directorioPrograma)
        : out_(salida), err_(errores), directorio_(std::move(directorioPrograma)) {}

    // The arguments without the program's name.
    int Ejecutar(const QStringList& argumentos);

    static QString TextoAyuda();

private:
    struct Opciones {
        QStringList posicionales;
        QString config, datos, entidad, columnas, interno;
        int limite = -1;
        bool demo = false, sinDatos = false, parcial = false, reemplazar = false, csv = false;
    };
    int LeerOpciones(const QStringList& args, Opciones& o);
    void AbrirStores(StoreDirectory& stores, const Opciones& o);
    QString CarpetaDatos(const Opciones& o) const;

    int Crear(const Opciones& o);
    int Actualizar(const Opciones& o);
    int Demo(const Opciones& o);
    int Importar(const Opciones& o);
    int Listar(const Opciones& o);
    int Estado(const Opciones& o);
    int Unificar(const Opciones& o);
    int RespaldoORestauracion(bool respaldar, const Opciones& o);

    void InformarEsquema(StoreDirectory& stores, bool soloActualizar);
    void InformarDemo(StoreDirectory& stores, const Opciones& o);

    QTextStream& out_;
    QTextStream& err_;
    QString directorio_;
};

} // namespace korven::schema
