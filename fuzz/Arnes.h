#pragma once

// The harness every fuzz driver shares. It draws inputs from a seeded std::mt19937_64: purely
// random bytes and tokens, or mutations of the hand-written samples of fuzz/semillas/<target>/
// (bits flipped, bytes inserted and deleted, samples spliced, pieces duplicated, awkward tokens
// and very long runs put in). The same seed gives the same inputs. Each sample is first run as
// it stands. A property that does not hold, an unexpected exception, a crash or an input that
// runs longer than the watchdog allows stops the run: the seed and the index of the input are
// printed and the input is written to fallo-<target>-<seed>-<index>.bin in the current folder.
//
//   driver [--entradas N] [--semilla S] [--segundos T] [--espera T] [--archivo F]
//
// --segundos caps the run by time, --espera is the watchdog (seconds an input may take) and
// --archivo runs one saved input alone.

#include <QByteArray>
#include <QDir>
#include <QFile>
#include <QList>
#include <QString>

#include <atomic>
#include <chrono>
#include <csignal>
#include <cstdio>
#include <cstring>
#include <fcntl.h>
#include <functional>
#include <random>
#include <string>
#include <thread>
#include <unistd.h>

#if defined(__SANITIZE_ADDRESS__)
#include <sanitizer/common_interface_defs.h>
#endif

namespace korven::fuzz {

// A property that does not hold, with what went wrong.
struct Falla {
    QString motivo;
};

inline void Exigir(bool condicion, const QString& motivo) {
    if (!condicion)
        throw Falla{motivo};
}

namespace detalle {

// What a crash handler or the watchdog needs, kept where a signal handler may read it.
struct Estado {
    const QByteArray* entrada = nullptr;
    std::atomic<long long> indice{-1};
    std::atomic<long long> inicioMs{-1}; // when the input in course began; -1 between inputs
    char prefijo[512] = {};              // "fallo-<target>-<seed>-"
    char objetivo[128] = {};
    unsigned long long semilla = 0;
};

inline Estado& estado() {
    static Estado e;
    return e;
}

inline long long AhoraMs() {
    return std::chrono::duration_cast<std::chrono::milliseconds>(
               std::chrono::steady_clock::now().time_since_epoch())
        .count();
}

// Decimal text of a number, safe inside a signal handler.
inline size_t Decimal(unsigned long long n, char* buf) {
    char t[24];
    size_t k = 0;
    do {
        t[k++] = static_cast<char>('0' + n % 10);
        n /= 10;
    } while (n);
    for (size_t i = 0; i < k; ++i)
        buf[i] = t[k - 1 - i];
    return k;
}

inline void Escribir(int fd, const char* s, size_t n) {
    while (n > 0) {
        const ssize_t w = ::write(fd, s, n);
        if (w <= 0)
            return;
        s += w;
        n -= static_cast<size_t>(w);
    }
}

inline void Escribir(int fd, const char* s) {
    Escribir(fd, s, std::strlen(s));
}

// Prints the seed and index and saves the input in course; safe inside a signal handler.
inline void GuardarEnCurso(const char* causa) {
    Estado& e = estado();
    const long long i = e.indice.load();
    char ruta[600];
    size_t n = std::strlen(e.prefijo);
    std::memcpy(ruta, e.prefijo, n);
    if (i < 0) {
        ruta[n++] = 'm';
        n += Decimal(static_cast<unsigned long long>(-i), ruta + n);
    } else {
        n += Decimal(static_cast<unsigned long long>(i), ruta + n);
    }
    std::memcpy(ruta + n, ".bin", 5);
    Escribir(2, "\nFALLA en ");
    Escribir(2, e.objetivo);
    Escribir(2, ": ");
    Escribir(2, causa);
    char num[24];
    Escribir(2, "; semilla ");
    Escribir(2, num, Decimal(e.semilla, num));
    Escribir(2, ", entrada ");
    if (i < 0)
        Escribir(2, "de muestra m");
    Escribir(2, num, Decimal(static_cast<unsigned long long>(i < 0 ? -i : i), num));
    Escribir(2, "; guardada en ");
    Escribir(2, ruta);
    Escribir(2, "\n");
    if (e.entrada) {
        const int fd = ::open(ruta, O_WRONLY | O_CREAT | O_TRUNC, 0644);
        if (fd >= 0) {
            Escribir(fd, e.entrada->constData(), static_cast<size_t>(e.entrada->size()));
            ::close(fd);
        }
    }
}

inline void AlMorir() {
    GuardarEnCurso("el programa se detuvo (ver el informe de arriba)");
}

inline void AlRecibirSenal(int senal) {
    GuardarEnCurso("señal de error");
    std::signal(senal, SIG_DFL);
    std::raise(senal);
}

} // namespace detalle

class Arnes {
public:
    // fichas: tokens of the target's own grammar, added to the common awkward ones.
    Arnes(int argc, char** argv, const char* objetivo, const QList<QByteArray>& fichas = {})
        : objetivo_(objetivo) {
        for (int i = 1; i + 1 < argc; i += 2) {
            const std::string o = argv[i];
            const char* v = argv[i + 1];
            if (o == "--entradas")
                entradas_ = std::stoll(v);
            else if (o == "--semilla")
                semilla_ = std::stoull(v);
            else if (o == "--segundos")
                segundos_ = std::stod(v);
            else if (o == "--espera")
                esperaMs_ = static_cast<long long>(std::stod(v) * 1000);
            else if (o == "--archivo")
                archivo_ = QString::fromLocal8Bit(v);
        }
        azar_.seed(semilla_);
        fichas_ = {",",
                   ".",
                   ";",
                   "\t",
                   "\"",
                   "\"\"",
                   "'",
                   "[",
                   "]",
                   "=",
                   "(",
                   ")",
                   "-",
                   " ",
                   "\r\n",
                   "\n",
                   "\r",
                   QByteArray(1, '\0'),
                   "99999999999999999999999",
                   "2147483648",
                   "-2147483649",
                   "1e308",
                   "1e-320",
                   "-0",
                   "NaN",
                   "inf",
                   "1.234,56",
                   "1,234.56",
                   "\xc3\xb1",
                   "\xc3\x81",
                   "\xc3\xa9",
                   "\xf0\x9d\x84\x9e",
                   "\xc3",
                   "\xff\xfe",
                   "\xef\xbb\xbf",
                   "\xed\xa0\x80"};
        fichas_ += fichas;
        QDir d(QStringLiteral(KORVEN_SEMILLAS) + QLatin1Char('/') + QLatin1String(objetivo));
        for (const QString& n : d.entryList(QDir::Files, QDir::Name)) {
            QFile f(d.filePath(n));
            if (f.open(QIODevice::ReadOnly))
                semillas_ << f.readAll();
        }
        detalle::Estado& e = detalle::estado();
        std::snprintf(e.objetivo, sizeof e.objetivo, "%s", objetivo);
        std::snprintf(e.prefijo, sizeof e.prefijo, "fallo-%s-%llu-", objetivo,
                      static_cast<unsigned long long>(semilla_));
        e.semilla = semilla_;
    }

    // Drawn inputs are cut to this many bytes (256 KiB unless the driver says less).
    void LimitarBytes(qsizetype maximo) { maximoBytes_ = maximo; }
    std::mt19937_64& azar() { return azar_; }
    // A number from desde to hasta, both included.
    int Entre(int desde, int hasta) {
        return desde + static_cast<int>(azar_() % static_cast<unsigned>(hasta - desde + 1));
    }
    const QList<QByteArray>& fichas() const { return fichas_; }

    // Runs the samples as they stand, then the drawn inputs; 0 when every property held.
    int Correr(const std::function<void(const QByteArray&)>& prueba) {
        detalle::Estado& e = detalle::estado();
#if defined(__SANITIZE_ADDRESS__)
        __sanitizer_set_death_callback(detalle::AlMorir);
#else
        for (int s : {SIGSEGV, SIGBUS, SIGFPE, SIGILL})
            std::signal(s, detalle::AlRecibirSenal);
#endif
        std::signal(SIGABRT, detalle::AlRecibirSenal);
        std::atomic<bool> fin{false};
        std::thread guardia([&] {
            while (!fin.load()) {
                std::this_thread::sleep_for(std::chrono::milliseconds(100));
                const long long desde = e.inicioMs.load();
                if (desde >= 0 && detalle::AhoraMs() - desde > esperaMs_) {
                    detalle::GuardarEnCurso("la entrada no terminó a tiempo");
                    ::_exit(3);
                }
            }
        });
        const auto inicio = std::chrono::steady_clock::now();
        const auto segundos = [&] {
            return std::chrono::duration<double>(std::chrono::steady_clock::now() - inicio).count();
        };
        int r = 0;
        long long hechas = 0;
        if (!archivo_.isEmpty()) {
            QFile f(archivo_);
            if (!f.open(QIODevice::ReadOnly)) {
                std::fprintf(stderr, "No se puede leer %s\n", qPrintable(archivo_));
                r = 2;
            } else {
                r = Una(prueba, f.readAll(), 0);
                hechas = 1;
            }
        } else {
            for (qsizetype i = 0; i < semillas_.size() && r == 0; ++i, ++hechas)
                r = Una(prueba, semillas_.at(i), -1 - i);
            for (long long i = 0; i < entradas_ && r == 0; ++i, ++hechas) {
                if (segundos_ > 0 && segundos() > segundos_)
                    break;
                r = Una(prueba, Generar(), i);
                if ((i + 1) % 100000 == 0)
                    std::fprintf(stderr, "%s: %lld entradas, %.0f s\n", objetivo_, i + 1,
                                 segundos());
            }
        }
        fin = true;
        guardia.join();
        std::printf("%s: semilla %llu, %lld entradas en %.1f s: %s\n", objetivo_,
                    static_cast<unsigned long long>(semilla_), hechas, segundos(),
                    r == 0 ? "sin fallas" : "FALLA");
        return r;
    }

private:
    int Una(const std::function<void(const QByteArray&)>& prueba, const QByteArray& entrada,
            long long indice) {
        detalle::Estado& e = detalle::estado();
        e.entrada = &entrada;
        e.indice = indice;
        e.inicioMs = detalle::AhoraMs();
        QString motivo;
        try {
            prueba(entrada);
        } catch (const Falla& f) {
            motivo = f.motivo;
        } catch (const std::exception& x) {
            motivo = QStringLiteral("excepción inesperada: ") + QString::fromLocal8Bit(x.what());
        } catch (...) {
            motivo = QStringLiteral("excepción inesperada");
        }
        e.inicioMs = -1;
        if (motivo.isEmpty())
            return 0;
        detalle::GuardarEnCurso(qPrintable(motivo));
        return 1;
    }

    QByteArray Ficha() {
        return fichas_.at(static_cast<qsizetype>(azar_() % fichas_.size()));
    }

    QByteArray Aleatoria() {
        QByteArray r;
        const int n = Entre(0, 64);
        for (int i = 0; i < n; ++i) {
            switch (azar_() % 3) {
            case 0:
                r += static_cast<char>(azar_() % 256);
                break;
            case 1:
                r += static_cast<char>(Entre(' ', '~'));
                break;
            default:
                r += Ficha();
            }
        }
        return r;
    }

    QByteArray Mutar(QByteArray e) {
        const auto lugar = [&] { return static_cast<qsizetype>(azar_() % (e.size() + 1)); };
        switch (azar_() % 16) {
        case 0:
        case 1:
            if (!e.isEmpty()) {
                const qsizetype p = lugar() % e.size();
                e[p] = static_cast<char>(e.at(p) ^ (1 << (azar_() % 8)));
            }
            break;
        case 2:
        case 3:
            e.insert(lugar(), static_cast<char>(azar_() % 256));
            break;
        case 4:
        case 5: {
            const qsizetype p = lugar();
            e.remove(p, Entre(1, 16));
            break;
        }
        case 6: {
            const QByteArray& otra =
                semillas_.at(static_cast<qsizetype>(azar_() % semillas_.size()));
            const qsizetype desde = static_cast<qsizetype>(azar_() % (otra.size() + 1));
            e = e.left(lugar()) + otra.mid(desde);
            break;
        }
        case 7: {
            const qsizetype p = lugar();
            e.insert(lugar(), e.mid(p, Entre(1, 64)));
            break;
        }
        case 8:
            // A very long run: a line, a field or a number far beyond any sane length.
            e.insert(lugar(), Ficha().repeated(Entre(100, 5000)));
            break;
        case 9:
            if (!e.isEmpty())
                e[lugar() % e.size()] = static_cast<char>(Entre('0', '9'));
            break;
        default:
            e.insert(lugar(), Ficha());
        }
        return e;
    }

    QByteArray Generar() {
        if (semillas_.isEmpty() || azar_() % 8 == 0)
            return Aleatoria();
        QByteArray e = semillas_.at(static_cast<qsizetype>(azar_() % semillas_.size()));
        for (int n = Entre(1, 6); n > 0; --n)
            e = Mutar(e);
        if (e.size() > maximoBytes_)
            e.truncate(maximoBytes_);
        return e;
    }

    const char* objetivo_;
    long long entradas_ = 2000;
    unsigned long long semilla_ = 1;
    double segundos_ = 0;
    qsizetype maximoBytes_ = 256 * 1024;
    long long esperaMs_ = 5000;
    QString archivo_;
    std::mt19937_64 azar_;
    QList<QByteArray> fichas_;
    QList<QByteArray> semillas_;
};

} // namespace korven::fuzz
