/// Computing beside the window's thread, on a copy: the newest task alone counts, an older one is asked to
/// stop and its result is dropped.
#pragma once

#include <QCoreApplication>
#include <QObject>
#include <QPointer>

#include <functional>
#include <memory>
#include <stop_token>
#include <thread>
#include <vector>

template <class Resultat>
class tache {
public:
    /// `pret` is called in the thread of `receveur`, unless that has gone or a newer task has begun.
    tache(QObject* receveur, std::function<void(Resultat)> pret)
        : receveur_(receveur), pret_(std::move(pret)), courante_(std::make_shared<long>(0)) {}
    tache(const tache&) = delete;
    tache& operator=(const tache&) = delete;
    ~tache() { arrete(); } // the threads are joined: they look at their token at every step

    /// Begins a task in the place of the one under way. It gets the token to look at, and works on what it
    /// holds.
    void lance(std::function<Resultat(std::stop_token)> travail) {
        arrete();
        en_cours_ = true;
        const long numero = *courante_;
        fils_.push_back(std::make_unique<fil>());
        fil* f = fils_.back().get();
        f->thread = std::jthread([this, f, numero, courante = std::weak_ptr<long>(courante_),
                                  receveur = receveur_, travail = std::move(travail)](std::stop_token arret) {
            auto r = std::make_shared<Resultat>(travail(arret));
            f->fini = true;
            if (arret.stop_requested()) return;
            // Delivered by the program's own thread; there `courante` tells whether this object still waits
            // for it.
            QMetaObject::invokeMethod(
                qApp,
                [this, numero, courante, receveur, r] {
                    const auto c = courante.lock();
                    if (!c || *c != numero || !receveur) return;
                    en_cours_ = false;
                    pret_(std::move(*r));
                },
                Qt::QueuedConnection);
        });
    }
    /// Ends the task under way without a result.
    void arrete() {
        ++*courante_;
        en_cours_ = false;
        for (auto& f : fils_) f->thread.request_stop();
        std::erase_if(fils_, [](const auto& f) { return f->fini.load(); });
    }
    bool en_cours() const { return en_cours_; }

private:
    struct fil {
        std::atomic<bool> fini = false;
        std::jthread thread; ///< last: joined before the flag goes
    };
    QPointer<QObject> receveur_;
    std::function<void(Resultat)> pret_;
    std::shared_ptr<long> courante_; ///< number of the newest task
    std::vector<std::unique_ptr<fil>> fils_;
    bool en_cours_ = false;
};
